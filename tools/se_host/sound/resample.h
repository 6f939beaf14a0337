// Bringing a recording to the rate that the engine works at.
#pragma once

#include "tools/se_host/sound/audio_file.h"

namespace se_host {

inline constexpr int kEngineSampleRate = 16000;  // Hz

// The recording at `sample_rate`, its channels in step and its beginning in place, rounded and saturated.
// A recording that has the rate already comes back unchanged. fails: Failure when the two rates lie further
// apart than the converter goes.
AudioData resample(AudioData audio, int sample_rate);

}  // namespace se_host
