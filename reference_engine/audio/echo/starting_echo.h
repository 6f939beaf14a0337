// The echo that is expected while nothing is known of its path: as loud as the far end, at any delay within the tail. It
// fades while the far end is heard: by then the path is known, or there is no loudspeaker. Threads: raise [audio] rt-safe.
#pragma once

#include "reference_engine/audio/echo/far_end.h"

namespace reference_engine {

class StartingEcho {
  public:
    void init() { share_ = 1; }

    // A block. in: `audible`, whether the far end is. in and out: the power expected by the canceller's filter.
    void raise(const FarEnd& far_end, bool audible, EchoBins& expected);

  private:
    float share_ = 1;  // of the far end's power
};

}  // namespace reference_engine
