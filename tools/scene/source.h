// A source of sound at the microphones of a scene: in free field, or in its room.
#pragma once

#include "tools/scene/convolution.h"
#include "tools/scene/geometry.h"
#include "tools/scene/voice.h"

namespace se_scene {

// `given`, repeated as needed, or speech of this voice when it is empty.
std::vector<float> speechOf(const std::vector<float>& given, const Voice& voice, size_t frames,
                            Random& random);

// `sound`, emitted at this place, at the microphones.
MicrophoneRows arriving(const std::vector<float>& sound, const Point& source, const SceneOptions& options);

}  // namespace se_scene
