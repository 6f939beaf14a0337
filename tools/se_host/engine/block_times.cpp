#include "tools/se_host/engine/block_times.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

namespace se_host {

BlockTimes blockTimesOf(std::vector<double> seconds) {
    if (seconds.empty()) return {};
    std::sort(seconds.begin(), seconds.end());
    const size_t count = seconds.size();
    const size_t rank = (99 * count + 99) / 100;  // rounded up
    return {std::accumulate(seconds.begin(), seconds.end(), 0.0) / static_cast<double>(count),
            seconds[rank - 1], seconds.back()};
}

}  // namespace se_host
