// The time of the streams: it stands still while they are paused, so that a pause does not look like lost frames.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

#include "host/se_host.h"

namespace se_pipewire {

class StreamClock {
  public:
    static constexpr uint64_t kNanosecondsOfFrame = 1000000000 / SE_HOST_SAMPLE_RATE;

    // [any] From now on, until the next frames come.
    void pause() { paused_ = true; }

    // [audio] The time, in nanoseconds, at which these frames come; `now` is that of a clock that never stands still.
    uint64_t at(uint64_t now, size_t frames) {
        if (paused_.exchange(false)) pauses_ = now - end_;
        const uint64_t time = now - pauses_;
        end_ = time + frames * kNanosecondsOfFrame;
        return time;
    }

  private:
    std::atomic<bool> paused_{true};
    uint64_t pauses_ = 0;
    uint64_t end_ = 0;  // of the last frames
};

}  // namespace se_pipewire
