// The end of the capture path: applies gains and limits. A change of gain is faded over one block. Threads: play [audio]
// rt-safe.
#pragma once

#include "reference_engine/audio/limiter.h"
#include "reference_engine/settings.h"

namespace reference_engine {

class Output {
  public:
    void init() { *this = Output{}; }

    // in: `rejected`, whether to lower the output by the rear rejection.
    void play(const int16_t* in, bool rejected, const Settings& settings, uint64_t sample_clock,
              int16_t* out);

  private:
    int32_t nextGain(bool rejected, const Settings& settings);

    int32_t gain_ = -1;    // Q15, at the end of the last block; below 0: none yet
    float rejection_ = 1;  // follows its target slowly
    Limiter limiter_;
};

}  // namespace reference_engine
