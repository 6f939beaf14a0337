// Makes the recordings of the trials, has both systems process them, and adds up the result.
#pragma once

#include "bench/engine_vs_peer/report.h"
#include "bench/engine_vs_peer/voice_files.h"

namespace engine_vs_peer {

// A trial with one seed.
struct Job {
    const Trial* trial;
    TrialOptions options;
};

// Without talkers the voices are synthetic. The recordings of several jobs are made at the same time, one on a core.
// Nothing else runs while the systems are timed.
// needs: at least one job, a loaded engine.
Report runTrials(const std::vector<Job>& jobs, const RecordedTalkers& talkers, int passes);

}  // namespace engine_vs_peer
