// How long the blocks of a run took.
#pragma once

#include <vector>

namespace se_host {

// Seconds of a block.
struct BlockTimes {
    double mean = 0;
    double percentile_99 = 0;  // of 100 blocks 99 take no longer
    double longest = 0;
};

// All 0 without a block.
BlockTimes blockTimesOf(std::vector<double> seconds);

}  // namespace se_host
