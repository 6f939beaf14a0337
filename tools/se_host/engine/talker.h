// One direction for a whole recording.
#pragma once

#include <optional>
#include <vector>

#include "tools/se_host/engine/processing.h"

namespace se_host {

struct Talker {
    int location;
    int azimuth_degrees;
    double share;       // of the blocks that point there, 0 to 1
    double confidence;  // mean over those blocks, 0 to 1
};

// The location with the largest total confidence; nothing when that is close to zero.
std::optional<Talker> findTalker(const std::vector<Direction>& directions);

struct LocationShare {
    int location;
    int azimuth_degrees;
    double share;       // of the blocks
    double confidence;  // mean over those blocks, 0 to 1
};

// The locations that occur, the most frequent first.
std::vector<LocationShare> locationShares(const std::vector<Direction>& directions);

}  // namespace se_host
