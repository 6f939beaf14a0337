// What a report says, in sentences: HTML.
#pragma once

#include <string>

#include "tools/se_host/sweep_report/report.h"

namespace se_host::report {

std::string findingsSection(const Report& report);

}  // namespace se_host::report
