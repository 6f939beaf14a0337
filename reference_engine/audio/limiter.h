// Keeps the output within 16 bits by lowering its gain for as long as it would exceed them, and leaves
// everything else alone, to the bit. It looks ahead as far as the block goes and adds no delay.
// Threads: process [audio] rt-safe.
#pragma once

#include "reference_engine/audio/format.h"

namespace reference_engine {

class Limiter {
  public:
    void init() { *this = Limiter{}; }

    // in: kBlock samples of any height. out: the same, limited.
    void process(const int32_t* in, int16_t* out);

  private:
    float gain_ = 1;  // at the end of the last block
    int hold_ = 0;    // samples for which it stays
};

}  // namespace reference_engine
