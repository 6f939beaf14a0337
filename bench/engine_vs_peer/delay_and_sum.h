// Delay-and-sum beam former: every microphone is delayed so that the talker's sound is in phase in all of them;
// the output is their mean.
#pragma once

#include <cstdint>

#include "tools/scene/geometry.h"
#include "webrtc_common/se_wrapper/dsp/block_size.h"

namespace engine_vs_peer {

inline constexpr size_t kBlock = quill::media::se_wrapper::BLOCK_SIZE;

class DelayAndSum {
  public:
    explicit DelayAndSum(const se_scene::MicrophonePositions& microphones) : microphones_(microphones) {}

    // To this point, with fractional delays. Call it before process.
    void steer(const se_scene::Point& talker);

    // in: kBlock interleaved frames of se_scene::kChannels samples. out: kBlock samples, saturated; they lag
    // the centre microphone by half of the filters' length.
    void process(const int16_t* interleaved, int16_t* out);

  private:
    static constexpr size_t kTaps = 24;
    static constexpr size_t kHistory = kTaps - 1;

    se_scene::MicrophonePositions microphones_;
    float taps_[se_scene::kMicrophones][kTaps] = {};  // the first tap multiplies the oldest sample
    float samples_[se_scene::kMicrophones][kHistory + kBlock] = {};
};

}  // namespace engine_vs_peer
