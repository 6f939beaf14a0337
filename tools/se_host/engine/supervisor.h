// Runs the engine in a child process, so that se_host outlives it: whatever the engine does, the run ends with one line
// that names the stage, a documented exit status, and no temporary file.
#pragma once

#include <functional>
#include <string>

namespace se_host {

struct Supervision {
    bool in_process = false;  // no child, for debuggers; then only an exit() of the engine is reported
    int timeout = 0;          // seconds that a call of the engine may take; 0: any
    // Called before the line, with the reason, when the engine ended the process.
    std::function<void(const std::string& reason)> on_engine_end = {};
};

// Returns in the child, which does the work and calls noteEnd. The parent forwards signals, waits, and exits with the
// status of the child. needs: one thread, no engine loaded, no output begun. fails: Failure.
void superviseEngine(const Supervision& supervision);

}  // namespace se_host
