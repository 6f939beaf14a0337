// Babble: voices all around the array, none of which is the talker.
#pragma once

#include "tools/scene/random.h"
#include "tools/scene/scene.h"

namespace se_scene {

// Twelve voices, evenly around, 3 m away or as far as the room allows. The scale is arbitrary, one for all rows.
MicrophoneRows babble(size_t frames, const SceneOptions& options, Random& random);

}  // namespace se_scene
