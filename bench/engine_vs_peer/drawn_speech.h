// Recorded speech instead of the synthetic voices of a scene.
#pragma once

#include "bench/engine_vs_peer/voice_files.h"
#include "tools/scene/scene.h"

namespace engine_vs_peer {

// Draws by the scene's seed who speaks, and what. Far end, talker and second talker are different people; the babble is
// that of all but the talker.
void giveRecordedSpeech(const RecordedTalkers& talkers, se_scene::SceneOptions& scene);

}  // namespace engine_vs_peer
