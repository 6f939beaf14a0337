// What happens to the far end between the host and the loudspeaker: delays, clocks that differ, buffers that are lost or
// repeated, an amplifier that clips. Pure functions; any thread.
#pragma once

#include "tools/scene/scene.h"

namespace se_scene {

// The row as the loudspeaker plays it, of the same length.
std::vector<float> played(const std::vector<float>& far_end, const SceneOptions& options);

}  // namespace se_scene
