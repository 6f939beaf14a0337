// The measures of the engine's audio. Constants and the one buffer that every filter needs.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>

namespace reference_engine {

inline constexpr int kSampleRate = 16000;
inline constexpr int kBlock = 160;      // samples a block: 10 ms
inline constexpr int kMicrophones = 7;  // 0 the centre, 1 to 6 the circle
inline constexpr int kLocations = 12;   // look directions, 30 degrees apart

using MicrophoneBlock = int16_t[kMicrophones][kBlock];

// A block and the `History` samples before it, so that a filter finds its past in one run of memory. Seven
// zeros follow: convolution routines in steps of eight read beyond the last sample.
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
