// The recordings that gained and lost most: HTML.
#pragma once

#include <string>

#include "tools/se_host/sweep_report/listening.h"
#include "tools/se_host/sweep_report/report.h"

namespace se_host::report {

inline constexpr size_t kExtremes = 5;  // recordings on each side

// Their names and differences. Empty when none differs.
std::string extremesTable(const Report& report, const Comparison& comparison);

// Of one comparison, the commands to listen, and pictures when `with_pictures`: these run the program twice a recording.
std::string recordingSection(const Report& report, const Comparison& comparison, const Listening& listening,
                             bool with_pictures);

}  // namespace se_host::report
