// The machine and the libraries of a run.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace routines_vs_libraries {

using Names = std::vector<std::pair<std::string, std::string>>;

// Processor, compiler, flags, date, load.
Names environment();

// The libraries and their versions; reported by the library where it has a function for it.
Names libraries();

}  // namespace routines_vs_libraries
