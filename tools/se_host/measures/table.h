// The rows behind the table of measures: how each is computed.
#pragma once

#include <optional>
#include <vector>

#include "tools/se_host/measures/functions.h"
#include "tools/se_host/measures/measures.h"

namespace se_host {

struct MeasureRow {
    Measure measure;
    size_t first_block;         // that counts for the whole recording
    MeasureFunction whole;      // from that block to the end
    MeasureFunction in_second;  // of the blocks of a second
};

const std::vector<MeasureRow>& measureRows();

// Rounded; nothing where it is not finite.
std::optional<double> valueOf(MeasureFunction function, const Analysis& analysis, Span span);

}  // namespace se_host
