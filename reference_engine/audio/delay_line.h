// The buffer of every filter: a block and its history, contiguous in memory.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>

#include "reference_engine/format.h"

namespace reference_engine {

// A block and the `History` samples before it. Seven zeros follow: convolution routines in steps of eight
// read beyond the last sample.
template <uint16_t History>
class DelayLine {
  public:
    void clear() { std::fill(std::begin(samples_), std::end(samples_), int16_t{0}); }

    void push(const int16_t* block) {
        std::copy(samples_ + kBlock, samples_ + kBlock + History, samples_);
        std::copy(block, block + kBlock, samples_ + History);
    }

    int16_t* oldest() { return samples_; }
    const int16_t* delayedBy(int samples) const { return samples_ + History - samples; }

  private:
    int16_t samples_[size_t{History} + kBlock + 8] = {};
};

}  // namespace reference_engine
