// Sound propagation from a point to each microphone: directly, or in a room with all of its reflections.
#pragma once

#include "tools/scene/convolution.h"
#include "tools/scene/geometry.h"

namespace se_scene {

// Adds an impulse of this height at a time in samples, which may lie between two: a sinc under a Hann window
// (Laakso et al., "Splitting the unit delay", 1996). Samples outside of the response are left out.
void addImpulse(std::vector<double>& response, double time, double height);

// Samples that addImpulse writes before and after its time.
inline constexpr size_t kImpulseReach = 32;

// Direct sound alone.
ImpulseResponses freeFieldResponses(const Point& source, const MicrophonePositions& microphones);

}  // namespace se_scene
