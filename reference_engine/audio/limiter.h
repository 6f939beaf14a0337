// Keeps the output within 16 bits by lowering its gain while it would exceed them. Everything else passes
// bit-exactly. It looks ahead within the block and adds no delay.
// Threads: process [audio] rt-safe.
#pragma once

#include "reference_engine/format.h"

namespace reference_engine {

class Limiter {
  public:
    void init() { *this = Limiter{}; }

    // in: kBlock samples of any value. out: the same, limited.
    void process(const int32_t* in, int16_t* out);

  private:
    float gain_ = 1;  // at the end of the last block
    int hold_ = 0;    // samples until the release begins
};

}  // namespace reference_engine
