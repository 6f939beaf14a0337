// The echo through the first partition of the paths, in 16 bits, by the convolution routine of the hooks. Threads: init
// [setup]; the others [audio] rt-safe.
#pragma once

#include <array>
#include <cstdint>

#include "reference_engine/audio/echo/echo_format.h"

namespace reference_engine {

class FirstPartition {
  public:
    void init();

    // in: kPartition taps, a lane a microphone.
    void set(const Lanes* taps);

    // in: the far end, oldest sample first: kPartition - 1 of the past and the block, then seven of any value. out: the
    // echo of the block, in samples.
    void predict(int16_t* far_end, float (&echo)[kMicrophones][kBlock]);

  private:
    using FractionBits = std::array<int, kMicrophones>;
    FractionBits fractionBitsFor(int32_t peak) const;
    void quantise(const FractionBits& fraction_bits);

    Lanes taps_[kPartition] = {};
    Lanes sum_ = {};  // of the taps' magnitudes
    Lanes largest_ = {};

    // The taps in 16 bits, the last one first.
    bool quantised_ = false;
    FractionBits fraction_bits_ = {};
    int16_t coeffs_[kMicrophones][kPartition] = {};
};

}  // namespace reference_engine
