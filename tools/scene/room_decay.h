// How fast a room falls silent, and what its walls must reflect so that it takes a given time. Formulas for
// diffuse fields miss a shoebox by a third: sound that runs level between the walls of a low room meets floor
// and ceiling seldom. So the energy of the images themselves is summed.
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
