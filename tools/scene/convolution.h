// Long signals through long impulse responses, by overlap-add in the frequency domain.
#pragma once

#include <vector>

#include "tools/scene/scene.h"

namespace se_scene {

// The paths from one source to each microphone. Sample `lead` is the moment of emission: fractional delays
// need a few samples before it.
struct ImpulseResponses {
    size_t lead = 0;
    std::vector<std::vector<double>> rows;  // one a microphone, all of one length
};

// out: as many samples as `signal`; the decay after its end is cut.
MicrophoneRows convolve(const std::vector<float>& signal, const ImpulseResponses& responses);

}  // namespace se_scene
