// Where the engine looks, as one direction and how steady it is (Batschelet: Circular Statistics in Biology, 1981).
#pragma once

#include <optional>
#include <vector>

#include "tools/se_host/engine/processing.h"
#include "tools/se_host/measures/span.h"

namespace se_host {

struct MeanDirection {
    std::optional<double> azimuth_degrees;  // 0 to 360, weighted by confidence; nothing when it is all around
    double deviation_degrees;               // angular deviation: 0 is steady, 81 is all around
};

// Nothing when the mean confidence is close to zero.
std::optional<MeanDirection> meanDirection(const std::vector<Direction>& directions, Span span);

}  // namespace se_host
