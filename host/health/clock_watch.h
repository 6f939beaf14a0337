// Frames that have not come although the caller's clock says that they should have.
//
// The first frame of a call was captured at a time that the caller gives. Behind the frames that have come this time
// runs by the offset of the two clocks, which drifts by some 100 ppm, by the jitter of the calls, and by what was lost. The
// least offset of the last seconds is free of jitter; what it jumps upwards and stays was lost.
// Threads: call on one thread, the results on any. rt-safe.
#pragma once

#include <cstdint>

#include "host/live/counter.h"

namespace se_host {

class ClockWatch {
  public:
    // in: nanoseconds at the first frame of a call; frames that came before it.
    void call(uint64_t nanoseconds, uint64_t frames);

    bool isUsed() const { return calls_.get() > 0; }
    uint64_t missing() const { return missing_.get(); }
    uint64_t late() const { return late_.get(); }

  private:
    void begin(int64_t offset, int64_t now);

    int64_t reference_ = 0;    // offset of a call without jitter
    int64_t least_ = 0;        // offset in the present piece
    int64_t piece_began_ = 0;  // nanoseconds
    Counter calls_;
    Counter missing_;
    Counter late_;
};

}  // namespace se_host
