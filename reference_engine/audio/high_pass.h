// Input high-pass of every microphone: takes away offset and rumble before anything else works on the signal.
// The far end goes through the same filter, so that echo and far end differ by the room alone.
// Linear phase, so it delays all frequencies alike by kDelay samples. Threads: process [audio] rt-safe.
#pragma once

#include "reference_engine/audio/format.h"

namespace reference_engine {

class HighPass {
  public:
    static constexpr int kDelay = 63;  // samples

    void init();
    void process(const MicrophoneBlock& in, MicrophoneBlock& out);
    void processFarEnd(const int16_t* in, int16_t* out);

  private:
    static constexpr int kTaps = 128;  // a multiple of eight, for convolution routines that like that

    int16_t coeffs_[kTaps] = {};
    using Line = DelayLine<kTaps - 1>;

    void filter(Line& line, const int16_t* in, int16_t* out);

    Line lines_[kMicrophones];
    Line far_end_;
};

}  // namespace reference_engine
