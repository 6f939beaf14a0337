// How long the blocks of a run take, on average and at the worst, for as long as it runs.
// Threads: add on one thread, result on any. rt-safe.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>

#include "host/live/counter.h"

namespace se_host {

class BlockTimes {
  public:
    // in: ticks of the time-stamp counter.
    void add(uint64_t ticks);

    struct Result {
        uint64_t blocks = 0;
        double mean = 0;  // ticks
        double p999 = 0;  // 99.9 % of the blocks take no longer; at most 1/16 too large
        double worst = 0;
    };
    Result result() const;

  private:
    static constexpr int kSteps = 16;  // of an octave
    static constexpr size_t kBuckets = 64 * kSteps;

    static size_t bucketOf(uint64_t ticks);
    static double endOf(size_t bucket);

    std::array<Counter, kBuckets> buckets_;
    Counter blocks_;
    Counter sum_;
    std::atomic<uint64_t> worst_{0};
};

}  // namespace se_host
