// Loads an engine build for the routines of its own.
// Threads: one.
#pragma once

#include <string>

namespace kernel_harness {

// fails: ends the process with the library's record when there is no such build in selibs/ or it cannot be
// used.
void loadEngine(const std::string& name);

}  // namespace kernel_harness
