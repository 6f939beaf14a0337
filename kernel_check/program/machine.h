// The machine of a benchmark.
#pragma once

#include <string>

namespace program {

// The name that the kernel reports, or "unknown".
std::string processorName();

// "family 6, model 207, stepping 2", because some names are not specific.
std::string processorModel();

// The compiler of this program, with its version.
std::string compilerName();

}  // namespace program
