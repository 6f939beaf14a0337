// The echo of the far end's newest block through the first taps of the paths, in 16 bits, by the convolution routine of the
// hooks. Threads: init [setup]; the others [audio] rt-safe.
#pragma once

#include <array>
#include <cstdint>

#include "reference_engine/audio/echo/echo_format.h"

namespace reference_engine {

class FirstTaps {
  public:
    void init();

    // in: kBlock taps, a lane a path.
    void set(const Lanes* taps);

    // in: the newest block of the far end. out: `echo`, kBlock samples, to which its echo is added.
    void addEcho(const int16_t* far_end, Lanes* echo);

  private:
    using FractionBits = std::array<int, kLanes>;
    FractionBits fractionBitsFor(int32_t peak) const;
    void quantise(const FractionBits& fraction_bits);

    Lanes taps_[kBlock] = {};  // the last one first
    Lanes sum_ = {};           // of the taps' magnitudes
    Lanes largest_ = {};

    // Silence, the newest block, and what the routine reads beyond it.
    int16_t far_end_[kBlock - 1 + kBlock + 7] = {};

    // The taps in 16 bits.
    bool quantised_ = false;
    FractionBits fraction_bits_ = {};
    int16_t coeffs_[kLanes][kBlock] = {};
};

}  // namespace reference_engine
