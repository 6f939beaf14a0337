// Input high-pass of every microphone: removes offset and rumble before all other stages.
// The far end passes the same filter, so that echo and far end differ by the room alone.
// Linear phase: every frequency is delayed by kDelay samples. Threads: process [audio] rt-safe.
#pragma once

#include "reference_engine/audio/delay_line.h"

namespace reference_engine {

class HighPass {
  public:
    static constexpr int kDelay = 63;  // samples

    void init();
    void process(const MicrophoneBlock& in, MicrophoneBlock& out);
    void processFarEnd(const int16_t* in, int16_t* out);

  private:
    static constexpr int kTaps =
        128;  // a multiple of eight, which suits convolution routines that work in eights

    int16_t coeffs_[kTaps] = {};
    using Line = DelayLine<kTaps - 1>;

    void filter(Line& line, const int16_t* in, int16_t* out);

    Line lines_[kMicrophones];
    Line far_end_;
};

}  // namespace reference_engine
