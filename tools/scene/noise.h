// Noise at the microphones: that of the sensors themselves, and that of a room which comes from all around.
#pragma once

#include "tools/scene/geometry.h"
#include "tools/scene/random.h"

namespace se_scene {

// White Gaussian noise, independent from row to row, of this root mean square.
MicrophoneRows sensorNoise(size_t frames, double rms, Random& random);

// Plane waves from all directions of the sphere, each with a noise of its own; two microphones d apart then
// agree by sin(kd) / (kd). The scale is arbitrary, one for all rows. Pink: as much power in each octave from
// 20 Hz up, nothing below.
MicrophoneRows diffuseNoise(size_t frames, const MicrophonePositions& microphones, NoiseColour colour,
                            Random& random);

}  // namespace se_scene
