#include "tools/scene/babble.h"

#include "tools/scene/room.h"
#include "tools/scene/rows.h"
#include "tools/scene/source.h"

namespace se_scene {
namespace {

constexpr size_t kVoices = 12;
constexpr double kFarthest = 3;  // metres
constexpr double kNearest = 0.5;

Point placeAt(double azimuth_deg, const SceneOptions& options) {
    double distance_m = kFarthest;
    while (options.reverberation_s > 0 && distance_m > kNearest &&
           !isInRoom(options.room, atAzimuth(azimuth_deg, distance_m))) {
        distance_m -= 0.1;
    }
    return atAzimuth(azimuth_deg, distance_m);
}

// When fewer are given, some have several places.
Row givenTo(size_t voice, const SceneOptions& options) {
    const auto& given = options.babble_speech;
    return given.empty() ? Row() : given[voice % given.size()];
}

}  // namespace

MicrophoneRows babble(size_t frames, const SceneOptions& options, Random& random) {
    MicrophoneRows sum = silence(frames);
    const double first_deg = random.uniform(0, 360.0 / kVoices);
    for (size_t i = 0; i < kVoices; ++i) {
        const Voice voice = withPitch(kTalkerVoice, random.uniform(90, 240));
        Row speech = speechOf(givenTo(i, options), voice, frames, random);
        scale(speech, factorFor(-26, activeLevelDbfs(speech)));
        add(sum, arriving(speech, placeAt(first_deg + static_cast<double>(i) * 360.0 / kVoices, options),
                          options));
    }
    return sum;
}

}  // namespace se_scene
