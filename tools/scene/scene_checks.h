// The valid range of each option of a scene.
#pragma once

#include "tools/scene/scene.h"

namespace se_scene {

// fails: std::invalid_argument names the first option that is out of its range, and the range.
void checkOptions(const SceneOptions& options);

}  // namespace se_scene
