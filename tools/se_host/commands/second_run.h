// A second run over the same recording with the engine's own routines, for comparison. It needs its own process,
// because an engine keeps its state and its hooks until the process ends.
#pragma once

#include <sys/types.h>

#include "tools/se_host/commands/engine_options.h"
#include "tools/se_host/engine/processing.h"
#include "tools/se_host/sound/recording.h"

namespace se_host {

class SecondRun {
  public:
    // Starts a child that waits. needs: no engine loaded yet, no output file begun, one thread. fails: Failure.
    SecondRun(const EngineOptions& engine, const RecordingOptions& recording, bool bypass, bool split_cycles);
    // Ends the child.
    ~SecondRun();
    SecondRun(const SecondRun&) = delete;
    SecondRun& operator=(const SecondRun&) = delete;

    // Lets the child work and waits for its result, which has no directions. `frames`: those of the recording.
    // needs: called once. fails: Failure.
    Processed finish(size_t frames);

  private:
    [[noreturn]] void failed();

    bool split_cycles_;
    pid_t child_;  // 0: it has ended
    int socket_;
};

}  // namespace se_host
