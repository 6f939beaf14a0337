// Noise at the microphones: sensor noise, and the diffuse noise of a room.
#pragma once

#include "tools/scene/geometry.h"
#include "tools/scene/random.h"

namespace se_scene {

// White Gaussian noise, independent from row to row, of this root mean square.
MicrophoneRows sensorNoise(size_t frames, double rms, Random& random);

// Plane waves from all directions of the sphere, each with independent noise. The coherence of two microphones at a
// distance d is sin(kd) / (kd). The scale is arbitrary, one for all rows. Pink: equal power in each octave from 20 Hz
// up, nothing below.
MicrophoneRows diffuseNoise(size_t frames, const MicrophonePositions& microphones, NoiseColour colour,
                            Random& random);

}  // namespace se_scene
