// The last values of a signal, contiguous in memory. They move to the front of the buffer only when it is full, as a copy of
// a long history in every block takes time. Threads: rt-safe.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>

#include "reference_engine/format.h"

namespace reference_engine {

template <class T, uint16_t kLength>
class SlidingWindow {
  public:
    void clear() {
        std::fill(std::begin(values_), std::end(values_), T{});
        first_ = 0;
    }

    // By a block. Returns where the newest one belongs.
    T* advance() {
        first_ += kBlock;
        if (first_ > kSpare) {
            std::copy(values_ + first_, values_ + first_ + kLength - kBlock, values_);
            first_ = 0;
        }
        return values_ + first_ + kLength - kBlock;
    }

    // kLength values, the oldest first.
    const T* values() const { return values_ + first_; }

  private:
    static constexpr int kSpare = 8 * kBlock;

    T values_[size_t{kLength} + kSpare] = {};
    int first_ = 0;
};

}  // namespace reference_engine
