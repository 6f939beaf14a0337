// Filter-and-sum beam former. Two of its beams are computed in each block: the one that the engine looks with, and another
// one. After a turn that is the beam before it, and the output fades from one to the other; otherwise it is each of the
// other directions in turn, so that the levels of all beams are known. Every beam has the history of all microphones: a
// turn costs nothing. A beam is the sum of one with robust weights and a share of the difference to one with sharp weights.
// Threads: init [setup]; process [audio] rt-safe.
#pragma once

#include "reference_engine/audio/beam_sharpness.h"
#include "reference_engine/audio/beam_weights.h"
#include "reference_engine/audio/delay_line.h"

namespace reference_engine {

inline constexpr int kLiveBeams = 2;

struct LiveBeams {
    int location[kLiveBeams];  // where they look; never the same direction
    int16_t samples[kLiveBeams][kBlock];
};

class BeamFormer {
  public:
    void init();

    // in: where to look; whether the share of the sharp weights follows this block, and the largest share. out: kBlock samples.
    void process(const MicrophoneBlock& in, int location, bool sharpness_follows, float most_sharpness,
                 int16_t* out);

    float sharpness() const { return sharpness_.share(); }

    // Of the last block.
    const LiveBeams& beams() const { return beams_; }

    // The centre microphone alone, with the beams' delay. out: kBlock samples, valid until the next block.
    const int16_t* centre() const { return lines_[0].delayedBy(kBeamDelay); }

  private:
    int otherThan(int location);

    void filter(const BeamWeights& weights, int location, int16_t* out);
    void blend(const int16_t* robust, const int16_t* difference, int16_t* out) const;

    BeamWeights robust_ = {}, difference_ = {};
    BeamSharpness sharpness_;
    DelayLine<kBeamTaps - 1> lines_[kMicrophones];
    LiveBeams beams_ = {};
    int location_ = 0;  // at the end of the last block
    int next_ = 0;      // of the other directions
};

}  // namespace reference_engine
