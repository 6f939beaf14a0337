// Positions of the microphones, and when sound from each look direction reaches them. Pure functions.
#pragma once

#include "reference_engine/format.h"

namespace reference_engine {

// Azimuth of a location in radians.
double azimuthOf(int location);

// Seconds by which a distant sound from `azimuth` (radians, in the plane of the array) reaches the microphone
// earlier than the centre; negative: later.
double leadOf(int microphone, double azimuth);

// Seconds that sound takes from one microphone to the other.
double delayBetween(int microphone, int other);

}  // namespace reference_engine
