// The rows behind the table of measures: how each is computed.
#pragma once

#include <optional>
#include <vector>

#include "tools/se_host/measures/analysis.h"
#include "tools/se_host/measures/measures.h"

namespace se_host {

using MeasureFunction = std::optional<double> (*)(const Analysis& analysis, Span span);

struct MeasureRow {
    Measure measure;
    size_t first_block;         // that counts for the whole recording
    MeasureFunction whole;      // from that block to the end
    MeasureFunction in_second;  // null: has no values over time
};

const std::vector<MeasureRow>& measureRows();

// Rounded; nothing where it is not finite.
std::optional<double> valueOf(MeasureFunction function, const Analysis& analysis, Span span);

}  // namespace se_host
