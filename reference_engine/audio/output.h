// The end of the capture path, before and after the noise reduction: selects the signal; applies gains and
// limits. Changes of look direction and gain are faded over one block. Threads: select, play [audio] rt-safe.
#pragma once

#include "reference_engine/audio/beam_former.h"
#include "reference_engine/audio/limiter.h"
#include "reference_engine/settings.h"

namespace reference_engine {

class Output {
  public:
    void init() { *this = Output{}; }

    // in: `location` to look at. out: kBlock samples.
    void select(const BeamFormer& former, const Beams& beams, int location, const Settings& settings,
                int16_t* out);

    // in: `rejected`, whether to lower the output by the rear rejection.
    void play(const int16_t* in, bool rejected, const Settings& settings, uint64_t sample_clock,
              int16_t* out);

  private:
    int32_t nextGain(bool rejected, const Settings& settings);

    int location_ = 0;     // at the end of the last block
    int32_t gain_ = -1;    // Q15, at the end of the last block; below 0: none yet
    float rejection_ = 1;  // follows its target slowly
    Limiter limiter_;
};

}  // namespace reference_engine
