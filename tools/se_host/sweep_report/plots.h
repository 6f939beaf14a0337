// The pictures of the report: SVG elements, drawn by gnuplot.
#pragma once

#include <string>
#include <vector>

#include "tools/se_host/sweep_report/comparison.h"
#include "tools/se_host/sweep_report/results.h"

namespace se_host::report {

// One box a tuning: the middle half of the recordings, their median, and whiskers from 10 to 90 %. `name` is an identifier.
std::string boxPlot(const std::string& name, const Results& results, const MeasureResults& measure);

// The differences from the reference, sorted: a line for each comparison, over the share of the recordings.
// needs: comparisons of one measure.
std::string pairedPlot(const std::string& name, const Results& results,
                       const std::vector<const Comparison*>& comparisons);

// The values of each second, a line for each tuning; gaps where there is none.
struct SecondsLine {
    std::string title;
    const char* colour;
    Values values;
};
std::string secondsPlot(const std::string& name, const Measure& measure,
                        const std::vector<SecondsLine>& lines);

}  // namespace se_host::report
