// Conversion of a recording to the engine's rate.
#pragma once

#include "host/engine/sample_rate.h"
#include "tools/se_host/sound/audio_file.h"

namespace se_host {

// The recording at `sample_rate`, its channels in step and its beginning in place, rounded and saturated.
// A recording at this rate is unchanged. fails: Failure when the ratio of the rates is out of the converter's range.
AudioData resample(AudioData audio, int sample_rate);

}  // namespace se_host
