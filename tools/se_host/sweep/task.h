// The work of one task, in the process that was started for it.
// Threads: one; the engine's control and audio thread.
#pragma once

#include "tools/se_host/sweep/order.h"

namespace se_host::sweep {

// Loads and tunes the engine, processes the recording and measures the output. result: the row.
// needs: no engine loaded. fails: UsageError, Failure, EngineFailure; an engine may end the process.
Json doTask(const Order& order);

}  // namespace se_host::sweep
