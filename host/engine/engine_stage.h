// What this process does with the engine, so that a message can name it when the engine ends the process.
// The stage is in memory that the process shares with the children it forks.
// Threads: any, but for shareStage.
#pragma once

#include <cxxabi.h>

#include <cstddef>
#include <cstdint>
#include <exception>
#include <string>

#include "host/output/errors.h"

namespace se_host {

enum class EngineStage : uint32_t {
    kNone,  // no engine is loaded yet
    kLoading,
    kStarting,
    kReadingDiags,
    kSettingDiags,
    kProcessing,
    kNoiseTest,
    kNoiseResults,
    kIdle,    // between two calls
    kEnding,  // the work is done
};

EngineStage engineStage();

// "while processing block 12".
std::string stageText();

// Counts the changes of the stage, so that a watchdog sees a call that does not return.
uint64_t stageChanges();

// The engine has failed: exit status kEngineEnded.
struct EngineFailure : se_output::Failure {
    using Failure::Failure;
};

// A stage from construction to destruction. `block` is for the stages that have one.
class InStage {
  public:
    explicit InStage(EngineStage stage, size_t block = 0);
    ~InStage();
    InStage(const InStage&) = delete;
    InStage& operator=(const InStage&) = delete;
};

[[noreturn]] void failOnException(const char* text);

// Runs `call`, which calls the engine, in a stage. fails: EngineFailure when an exception leaves the engine; errors
// of the host's own pass through.
template <class Call>
auto callEngine(EngineStage stage, Call&& call, size_t block = 0) {
    const InStage in_stage(stage, block);
    try {
        return call();
    } catch (const se_output::UsageError&) {
        throw;
    } catch (const se_output::Failure&) {
        throw;
    } catch (const abi::__forced_unwind&) {  // the engine ends the thread
        throw;
    } catch (const std::exception& error) {
        failOnException(error.what());
    } catch (...) {
        failOnException("of unknown type");
    }
}

// The work is done, and the process is about to end with this status. Without this call an end of the process is the
// engine's doing.
void noteEnd(int status);

// The status that noteEnd was called with; -1: it was not called.
int notedEnd();

// Puts all this into shared memory. needs: called before fork, by the only thread.
void shareStage();

}  // namespace se_host
