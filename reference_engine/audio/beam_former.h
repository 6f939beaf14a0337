// Filter-and-sum beam former: all look directions at once, so that a change of direction costs nothing and
// the level of every beam is known. Threads: process [audio] rt-safe.
#pragma once

#include "reference_engine/audio/beam_weights.h"
#include "reference_engine/audio/delay_line.h"

namespace reference_engine {

// Interleaved, as the interpolation routine writes it: sample i of direction d is [i][d].
using Beams = int16_t[kBlock][kLocations];

class BeamFormer {
  public:
    void init();
    void process(const MicrophoneBlock& in, Beams& beams);

    // The centre microphone alone, with the beams' delay. out: kBlock samples, valid until the next block.
    const int16_t* centre() const { return lines_[0].delayedBy(kBeamDelay); }

  private:
    BeamWeights weights_ = {};
    DelayLine<kBeamTaps - 1> lines_[kMicrophones];
};

}  // namespace reference_engine
