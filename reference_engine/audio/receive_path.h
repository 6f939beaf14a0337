// The far end towards the loudspeaker: gain, and a copy of the played block for the echo canceller.
// Threads: process [audio] rt-safe.
#pragma once

#include "reference_engine/format.h"

namespace reference_engine {

class ReceivePath {
  public:
    void init();

    // in, out: 160 samples, the same memory allowed; gain in Q10, rounded and saturated.
    void process(const int16_t* in, int16_t* out, int16_t gain_q10);

    // The samples that the loudspeaker plays in this block's 10 ms.
    const int16_t (&played() const)[kBlock] { return played_; }

    // Ends the 10 ms: without a further far-end block the next ones play silence.
    void endBlock() { init(); }

  private:
    int16_t played_[kBlock] = {};
};

}  // namespace reference_engine
