#include "reference_engine/audio/geometry.h"

#include <cmath>
#include <cstddef>

#include "reference_engine/build.h"
#include "reference_engine/routines/elementary.h"

namespace reference_engine {
namespace {

constexpr double kSpeedOfSound = 343.0;  // metres a second, at 20 degrees Celsius

// Of the microphone that is `step` steps of 60 degrees after microphone 1.
constexpr double stepAzimuth(int step) {
    return 2 * M_PI * step / (kMicrophones - 1);
}

constexpr MicrophonePlace onCircle(int step) {
    return {kArrayRadius, stepAzimuth(step)};
}

constexpr MicrophonePlaces kBuiltIn = {
    {{0, 0}, onCircle(0), onCircle(1), onCircle(2), onCircle(3), onCircle(4), onCircle(5)}};

MicrophonePlaces g_places = kBuiltIn;

const MicrophonePlace& placeOf(int microphone) {
    return g_places[static_cast<size_t>(microphone)];
}

}  // namespace

void placeMicrophones(const MicrophonePlaces& places) {
    g_places = places;
}

void placeBuiltInMicrophones() {
    g_places = kBuiltIn;
}

bool isRegularCircle() {
    for (int m = 1; m < kMicrophones; ++m) {
        if (placeOf(m).distance != placeOf(1).distance || placeOf(m).azimuth != stepAzimuth(m - 1)) {
            return false;
        }
    }
    return true;
}

double azimuthOf(int location) {
    return 2 * M_PI * location / kLocations;
}

double leadOf(int microphone, double azimuth) {
    const MicrophonePlace& place = placeOf(microphone);
    return place.distance * cosine(azimuth - place.azimuth) / kSpeedOfSound;
}

double delayBetween(int microphone, int other) {
    const double x = leadOf(microphone, 0) - leadOf(other, 0);
    const double y = leadOf(microphone, M_PI / 2) - leadOf(other, M_PI / 2);
    return std::sqrt(x * x + y * y);
}

}  // namespace reference_engine
