#include "tools/scene/room.h"

#include "tools/scene/room_decay.h"

namespace se_scene {

namespace {

constexpr double kWallMargin = 0.1;  // metres
constexpr double kLowestHz = 100;

// All images have the same sign, so they add up at long wavelengths. The lowest frequencies are removed by the
// filter that Allen and Berkley recommend.
void removeLowest(std::vector<double>& response) {
    const double angle = 2 * M_PI * kLowestHz / kSampleRate;
    const double radius = std::exp(-angle);
    double last = 0;
    double before = 0;
    for (double& sample : response) {
        const double now = sample + 2 * radius * std::cos(angle) * last - radius * radius * before;
        sample = now - (1 + radius) * last + radius * before;
        before = last;
        last = now;
    }
}

}  // namespace

Point arrayInRoom(const RoomSize& room) {
    return {0.46 * room.length_m, 0.44 * room.width_m, 0.38 * room.height_m};
}

bool isInRoom(const RoomSize& room, const Point& point) {
    const Point at = arrayInRoom(room) + point;
    const auto between = [](double position, double size) {
        return position >= kWallMargin && position <= size - kWallMargin;
    };
    return between(at.x, room.length_m) && between(at.y, room.width_m) && between(at.z, room.height_m);
}

ImpulseResponses roomResponses(const RoomSize& room, double reverberation_s, const Point& source,
                               const MicrophonePositions& microphones) {
    const Point array = arrayInRoom(room);
    const double reflection = reflectionFor(room, reverberation_s, array + source, array);

    ImpulseResponses responses;
    responses.lead = kImpulseReach;
    const auto taps = static_cast<size_t>(reverberation_s * kSampleRate) + 2 * kImpulseReach;
    responses.rows.assign(microphones.size(), std::vector<double>(taps));
    const auto addImage = [&](const Point& image, int reflections) {
        const double strength = std::pow(reflection, reflections);
        for (size_t m = 0; m < microphones.size(); ++m) {
            const double distance = length(image - microphones[m]);
            addImpulse(responses.rows[m], distance * kSamplesPerMetre + kImpulseReach, strength / distance);
        }
    };
    visitImages(room, array + source, array, reverberation_s * kSpeedOfSound, addImage);
    for (auto& row : responses.rows) removeLowest(row);
    return responses;
}

}  // namespace se_scene
