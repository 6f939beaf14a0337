// The estimated echo paths from the loudspeaker to each microphone, and the echo that they predict. They are
// impulse responses in the time domain, where a gradient is limited to its partition by truncation.
// Threads: init [setup]; the others [audio] rt-safe.
#pragma once

#include "reference_engine/audio/echo_format.h"
#include "reference_engine/audio/lane_fft.h"

namespace reference_engine {

class EchoPath {
  public:
    void init();

    // in: kPartition rows, one lane a microphone.
    void add(int partition, const LaneFft::Signals& correction);

    // in: the far end, oldest sample first: kEchoTaps - 1 of the past and the block, then seven of any value.
    // out: the echo of the block, in samples: zeros when the whole input is silent, and no routine is called
    // then.
    void predict(int16_t* far_end, int32_t (&echo)[kMicrophones][kBlock]);

    // Sum of squares of each partition's taps, mean of the microphones.
    const float (&energy() const)[kPartitions] { return energy_; }

  private:
    void quantise(int32_t peak, int (&fraction_bits)[kLanes]);

    Lanes taps_[kEchoTaps] = {};
    int16_t rounded_[kEchoTaps][kLanes] = {};
    float energy_[kPartitions] = {};
};

}  // namespace reference_engine
