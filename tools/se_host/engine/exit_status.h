// The exit statuses of se_host: one table, which --help prints.
#pragma once

#include <iterator>

namespace se_host {

enum ExitStatus {
    kDone = 0,
    kFailure = 1,
    kWrongUsage = 2,
    kSettingsDiffer = 3,
    kEngineEnded = 4,
};

struct ExitStatusRow {
    ExitStatus status;
    const char* meaning;
};

inline constexpr ExitStatusRow kExitStatuses[] = {
    {kDone, "all was done"},
    {kFailure, "a failure; an engine build that cannot be used"},
    {kWrongUsage, "wrong usage"},
    {kSettingsDiffer, "done, but the engine does not hold a setting as it was asked for"},
    {kEngineEnded, "the engine ended the process, threw an exception or exceeded --engine-timeout"},
};

}  // namespace se_host
