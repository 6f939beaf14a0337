// What a benchmark ran on.
#pragma once

#include <string>

namespace program {

// As the kernel names it; "unknown" when it does not.
std::string processorName();

// "family 6, model 207, stepping 2": some names say little.
std::string processorModel();

// That built this program, with its version.
std::string compilerName();

}  // namespace program
