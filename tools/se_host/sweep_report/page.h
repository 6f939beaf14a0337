// The page of a report.
#pragma once

#include <string>

#include "tools/se_host/sweep_report/listening.h"
#include "tools/se_host/sweep_report/report.h"

namespace se_host::report {

struct PageOptions {
    std::string show;  // the tuning whose recordings are shown; empty: that with the most certain difference
    bool with_pictures = true;  // of recordings
};

// HTML. The same results give the same page. fails: Failure, UsageError.
std::string pageOf(const Report& report, const Listening& listening, const PageOptions& options);

}  // namespace se_host::report
