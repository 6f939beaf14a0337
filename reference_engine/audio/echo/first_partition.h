// The echo through the first partition of the paths, in 16 bits, by the convolution routine of the hooks. Threads: init
// [setup]; the others [audio] rt-safe.
#pragma once

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
    void predict(int16_t* far_end, float (&echo)[kMicrophones][kBlock]) const;

  private:
    void quantise(int32_t peak, int (&fraction_bits)[kLanes], LaneInts (&coeffs)[kPartition]) const;

    Lanes taps_[kPartition] = {};
};

}  // namespace reference_engine
