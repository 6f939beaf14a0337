// What has been found, for people and for programs.
// Threads: one.
#pragma once

#include <string>
#include <vector>

#include "bench/peers/contest.h"
#include "bench/peers/environment.h"

namespace peers {

struct Findings {
    Names environment, libraries;
    std::vector<Result> results;
};

// Tables by area, for a terminal and as a part of a document.
std::string textOf(const Findings& findings);
std::string markdownOf(const Findings& findings);

std::string jsonOf(const Findings& findings);

}  // namespace peers
