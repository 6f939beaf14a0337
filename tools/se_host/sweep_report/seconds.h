// The measures over time that a sweep wrote.
#pragma once

#include <string>

#include "tools/se_host/sweep_report/results.h"

namespace se_host::report {

// A value for each second, as FOLDER/over-time has it. Empty when the sweep wrote none.
Values secondsOf(const Results& results, size_t tuning, size_t recording, const std::string& measure);

}  // namespace se_host::report
