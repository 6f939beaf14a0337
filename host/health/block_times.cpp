#include "host/health/block_times.h"

#include <algorithm>
#include <cmath>

namespace se_host {

// The position of the highest bit, and the four bits below it.
size_t BlockTimes::bucketOf(uint64_t ticks) {
    const uint64_t shown = std::max<uint64_t>(ticks, kSteps);
    const int octave = 63 - __builtin_clzll(shown);
    const uint64_t step = (shown >> (octave - 4)) - kSteps;
    return static_cast<size_t>(octave) * kSteps + step;
}

double BlockTimes::endOf(size_t bucket) {
    const auto octave = static_cast<int>(bucket / kSteps);
    const auto step = static_cast<double>(bucket % kSteps);
    return std::ldexp(1 + (step + 1) / kSteps, octave);
}

void BlockTimes::add(uint64_t ticks) {
    buckets_[bucketOf(ticks)].add();
    blocks_.add();
    sum_.add(ticks);
    if (ticks > worst_.load(std::memory_order_relaxed)) worst_.store(ticks, std::memory_order_relaxed);
}

// The counters may move meanwhile: those of the buckets are summed before they are compared.
BlockTimes::Result BlockTimes::result() const {
    std::array<uint64_t, kBuckets> counts{};
    uint64_t all = 0;
    for (size_t i = 0; i < kBuckets; ++i) all += counts[i] = buckets_[i].get();
    if (all == 0) return {};
    const auto worst = static_cast<double>(worst_.load(std::memory_order_relaxed));
    uint64_t below = 0;
    size_t bucket = 0;
    while (bucket + 1 < kBuckets && 1000 * (below + counts[bucket]) < 999 * all) below += counts[bucket++];
    const double mean =
        static_cast<double>(sum_.get()) / static_cast<double>(std::max<uint64_t>(blocks_.get(), 1));
    return {all, mean, std::min(endOf(bucket), worst), worst};
}

}  // namespace se_host
