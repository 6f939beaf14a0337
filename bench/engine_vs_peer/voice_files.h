// Recorded speech: a folder of talkers, each a folder of WAV files.
#pragma once

#include <string>
#include <vector>

#include "tools/scene/measure.h"

namespace engine_vs_peer {

// A person, and what it said: without the silence around it, without a constant offset.
struct RecordedTalker {
    std::string name;  // of the folder
    std::vector<se_scene::Row> utterances;
};
using RecordedTalkers = std::vector<RecordedTalker>;

// Each scene has this many talkers at most, the far end among them.
inline constexpr size_t kFewestTalkers = 3;

// In the order of their names: at least kFewestTalkers, each with an utterance. Other files than *.wav do not count.
// fails: se_output::Failure names the folder or the file.
RecordedTalkers readTalkers(const std::string& folder);

}  // namespace engine_vs_peer
