// Starts an engine build for a measuring program.
#pragma once

#include <string>

namespace program {

// Binds the static properties to a tree that exists until the process ends, sets the build to load (empty: the
// wrapper's choice), and calls `start`, one of the wrapper's two start-up functions. Call it once.
// fails: from then on a fatal record of the library is one line on standard error, after the program's name, and
//        ends the process with exit code 1.
void startEngine(const std::string& program, const std::string& build, void (*start)());

}  // namespace program
