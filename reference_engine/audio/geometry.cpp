#include "reference_engine/audio/geometry.h"

#include <cmath>

#include "reference_engine/build.h"

namespace reference_engine {
namespace {

constexpr double kSpeedOfSound = 343.0;  // metres a second, at 20 degrees Celsius
constexpr double kCircleMicrophones = kMicrophones - 1;

}  // namespace

double azimuthOf(int location) {
    return 2 * M_PI * location / kLocations;
}

double leadOf(int microphone, double azimuth) {
    if (microphone == 0) return 0;
    const double microphone_azimuth = 2 * M_PI * (microphone - 1) / kCircleMicrophones;
    return kArrayRadius * std::cos(azimuth - microphone_azimuth) / kSpeedOfSound;
}

double delayBetween(int microphone, int other) {
    return std::hypot(leadOf(microphone, 0) - leadOf(other, 0),
                      leadOf(microphone, M_PI / 2) - leadOf(other, M_PI / 2));
}

}  // namespace reference_engine
