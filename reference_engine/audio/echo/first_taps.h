// The echo of the far end's newest blocks through the first taps of the paths, in 16 bits, by the convolution routine of the
// hooks. Threads: init [setup]; the others [audio] rt-safe.
#pragma once

#include <array>
#include <cstdint>

#include "reference_engine/audio/echo/echo_format.h"

namespace reference_engine {

class FirstTaps {
  public:
    void init();

    // in: kPartition taps, a lane a path.
    void set(const Lanes* taps);

    // in: the newest `blocks` blocks of the far end. out: `echo`, kBlock samples, to which the last block of their echo is
    // added. needs: 1 to kPartitionBlocks.
    void addEcho(const int16_t* far_end, int blocks, Lanes* echo);

  private:
    using FractionBits = std::array<int, kLanes>;
    FractionBits fractionBitsFor(int32_t peak) const;
    void quantise(const FractionBits& fraction_bits);

    Lanes taps_[kPartition] = {};  // the last one first
    Lanes sum_ = {};               // of the taps' magnitudes
    Lanes largest_ = {};

    // Silence, the newest blocks, and what the routine reads beyond them.
    int16_t far_end_[kBlock - 1 + kPartition + 7] = {};

    // The taps in 16 bits.
    bool quantised_ = false;
    FractionBits fraction_bits_ = {};
    int16_t coeffs_[kLanes][kPartition] = {};
};

}  // namespace reference_engine
