// Positions in metres, relative to the centre microphone: x along microphone 1, y at azimuth 90 degrees,
// z upwards.
#pragma once

#include <array>
#include <cmath>

#include "tools/scene/scene.h"

namespace se_scene {

inline constexpr double kSpeedOfSound = 343.0;  // m/s, air at 20 degrees Celsius
inline constexpr double kSamplesPerMetre = kSampleRate / kSpeedOfSound;

struct Point {
    double x = 0;
    double y = 0;
    double z = 0;
};

inline Point operator+(const Point& a, const Point& b) {
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
inline Point operator-(const Point& a, const Point& b) {
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
inline double dot(const Point& a, const Point& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
inline double length(const Point& a) {
    return std::sqrt(dot(a, a));
}

// In the plane of the array.
inline Point atAzimuth(double azimuth_deg, double distance_m) {
    const double angle = azimuth_deg * M_PI / 180;
    return {distance_m * std::cos(angle), distance_m * std::sin(angle), 0};
}

using MicrophonePositions = std::array<Point, kMicrophones>;

inline MicrophonePositions microphonePositions(double radius_m) {
    MicrophonePositions positions;
    for (size_t m = 1; m < positions.size(); ++m) {
        positions[m] = atAzimuth(60.0 * static_cast<double>(m - 1), radius_m);
    }
    return positions;
}

inline MicrophonePositions microphonePositions(const SceneOptions& options) {
    MicrophonePositions positions = microphonePositions(options.array_radius_m);
    for (size_t m = 0; m < options.circle.size(); ++m) {
        positions.at(m + 1) = atAzimuth(options.circle[m].azimuth_deg, options.circle[m].distance_m);
    }
    return positions;
}

}  // namespace se_scene
