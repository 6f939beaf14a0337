// The results, as tables and as JSON.
#pragma once

#include <string>
#include <vector>

#include "bench/routines_vs_libraries/contest.h"
#include "bench/routines_vs_libraries/environment.h"

namespace routines_vs_libraries {

struct Findings {
    Names environment, libraries;
    std::vector<Result> results;
};

// Tables by area, for a terminal and as a part of a document.
std::string textOf(const Findings& findings);
std::string markdownOf(const Findings& findings);

std::string jsonOf(const Findings& findings);

}  // namespace routines_vs_libraries
