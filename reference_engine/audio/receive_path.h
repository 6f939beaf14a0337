// The far end on its way to the loudspeaker: gain, and a copy of what is played for the echo canceller.
// Threads: process [audio] rt-safe.
#pragma once

#include "reference_engine/audio/format.h"

namespace reference_engine {

class ReceivePath {
  public:
    void init();

    // in, out: 160 samples, the same memory allowed; gain in Q10, rounded and saturated.
    void process(const int16_t* in, int16_t* out, int16_t gain_q10);

    // What the loudspeaker plays in this block's 10 ms.
    const int16_t (&played() const)[kBlock] { return played_; }

    // The 10 ms are over: a client that brings no far end for the next ones plays silence.
    void endBlock() { init(); }

  private:
    int16_t played_[kBlock] = {};
};

}  // namespace reference_engine
