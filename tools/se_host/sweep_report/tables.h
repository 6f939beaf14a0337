// The tables of a report: HTML.
#pragma once

#include <string>
#include <vector>

#include "tools/se_host/sweep_report/report.h"

namespace se_host::report {

// These measures by tunings: median, range and number over these recordings; coloured where `comparisons` are clear.
std::string tuningsTable(const Report& report, const std::vector<size_t>& measures,
                         const std::vector<size_t>& recordings, const std::vector<Comparison>& comparisons,
                         const std::string& caption);

// One measure, a row for each tuning but the reference. Empty without a comparison.
std::string comparisonTable(const Report& report, size_t measure);

// The measures that are the same with every tuning. Empty without one.
std::string recordingsTable(const Report& report);

// Empty without a failed row.
std::string failedTable(const Results& results);

}  // namespace se_host::report
