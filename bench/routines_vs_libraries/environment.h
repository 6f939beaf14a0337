// What a run ran on and with.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace routines_vs_libraries {

using Names = std::vector<std::pair<std::string, std::string>>;

// Processor, compiler, flags, date, load.
Names environment();

// The libraries and their versions, as they say themselves where they can be asked.
Names libraries();

}  // namespace routines_vs_libraries
