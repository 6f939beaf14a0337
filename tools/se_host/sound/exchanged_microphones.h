// Two microphones that changed places: with them put right, the sound arrives as from one direction (steered response power
// with phase transform, DiBiase 2000).
#pragma once

#include <utility>
#include <vector>

#include "host/engine/array_file.h"
#include "tools/se_host/sound/recording.h"

namespace se_host {

using MicrophonePair = std::pair<int, int>;

// The pairs whose exchange explains the sound much better: one, or several that stand alike towards the sound. Empty when the
// order is right, or the sound does not tell. Another array than `array` can look like an exchange.
std::vector<MicrophonePair> exchangedMicrophones(const Recording& recording, const ArrayFile& array);

}  // namespace se_host
