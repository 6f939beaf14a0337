// Positions of the microphones, and when sound from each look direction reaches them. Threads: placeMicrophones [setup],
// the others any, but not meanwhile.
#pragma once

#include <array>

#include "reference_engine/format.h"

namespace reference_engine {

// A microphone in the plane of the array, relative to the centre microphone.
struct MicrophonePlace {
    double distance;  // metres
    double azimuth;   // radians, counter-clockwise seen from above
};

// The microphones 0, the centre, to 6.
using MicrophonePlaces = std::array<MicrophonePlace, kMicrophones>;

// The build's own array is a circle, every 60 degrees. It counts until another is given.
void placeMicrophones(const MicrophonePlaces& places);
void placeBuiltInMicrophones();

// Whether the array is a circle as the built-in one, of any radius: it looks the same after a turn of 60 degrees, each
// microphone of the circle then stands in the place of the next.
bool isRegularCircle();

// Azimuth of a location in radians.
double azimuthOf(int location);

// Seconds by which a distant sound from `azimuth` (radians, in the plane of the array) reaches the microphone
// earlier than the centre; negative: later.
double leadOf(int microphone, double azimuth);

// Seconds that sound takes from one microphone to the other.
double delayBetween(int microphone, int other);

}  // namespace reference_engine
