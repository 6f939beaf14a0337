// The reverberation time of a room, and the reflection of its walls for a given time. Formulas for diffuse fields
// are wrong by a third for a shoebox room: in a low room, sound that propagates horizontally is seldom reflected by
// floor and ceiling. Therefore the energy of the images is summed.
#pragma once

#include "tools/scene/image_sources.h"

namespace se_scene {

// Time in which the sound would fall by 60 dB, from the fall between 5 and 35 dB of the energy that is still
// to come (Schroeder 1965). in: energy by time, one value each `step_s` seconds. fails: 0 when it falls too
// little.
double reverberationTime(const std::vector<double>& energy, double step_s);

// Share of the amplitude that each wall must reflect, 0 to 1.
double reflectionFor(const RoomSize& room, double reverberation_s, const Point& source,
                     const Point& listener);

}  // namespace se_scene
