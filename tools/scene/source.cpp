#include "tools/scene/source.h"

#include "tools/scene/room.h"

namespace se_scene {

std::vector<float> speechOf(const std::vector<float>& given, const Voice& voice, size_t frames,
                            Random& random) {
    if (given.empty()) return synthesiseSpeech(voice, frames, random);
    std::vector<float> repeated(frames);
    for (size_t i = 0; i < frames; ++i) repeated[i] = given[i % given.size()];
    return repeated;
}

MicrophoneRows arriving(const std::vector<float>& sound, const Point& source, const SceneOptions& options) {
    const MicrophonePositions microphones = microphonePositions(options);
    return convolve(sound, options.reverberation_s > 0
                               ? roomResponses(options.room, options.reverberation_s, source, microphones)
                               : freeFieldResponses(source, microphones));
}

}  // namespace se_scene
