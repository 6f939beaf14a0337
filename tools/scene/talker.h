// The talkers of a scene: when each speaks, and from where.
#pragma once

#include "tools/scene/scene.h"

namespace se_scene {

struct TalkerSound {
    MicrophoneRows rows;
    std::vector<float> direct;  // see Scene
};

TalkerSound makeTalkers(const SceneOptions& options, size_t frames);

}  // namespace se_scene
