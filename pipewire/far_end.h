// The far end as one channel: what reaches the loudspeakers, of a stream that may have more channels than the loudspeakers.
#pragma once

#include <spa/param/audio/raw.h>

#include <cstddef>
#include <cstdint>

namespace se_pipewire {

class FarEnd {
  public:
    FarEnd() = default;

    // The mean of front left and front right, or else of the first two channels: at version 2 of the interface the stream
    // that is played has the format of the capture, and what programs play is in its first two channels.
    explicit FarEnd(const spa_audio_info_raw& played);

    // [audio] in: played, the channels; samples from `begin` on. out: `mixed`, used only when there are two channels.
    // result: `frames` samples.
    const float* mono(const float* const* played, size_t begin, size_t frames, float* mixed) const;

  private:
    uint32_t left_ = 0;
    uint32_t right_ = 0;  // the same: there is one channel
};

}  // namespace se_pipewire
