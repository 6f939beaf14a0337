// The recordings of one trial with one seed, before the systems have processed them.
#pragma once

#include "bench/engine_vs_peer/trials.h"
#include "bench/engine_vs_peer/voice_files.h"

namespace engine_vs_peer {

struct Job {
    const Trial* trial;
    TrialOptions options;
};

// Without talkers the voices are synthetic. A scene that would overload a microphone is lowered as a whole, so that
// only the loudspeaker clips, where it is to clip.
std::vector<Recording> makeRecordings(const Job& job, const RecordedTalkers& talkers);

}  // namespace engine_vs_peer
