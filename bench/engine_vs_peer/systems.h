// Both systems over one recording, block by block in turn, so that other load on the machine slows both.
#pragma once

#include <string>
#include <vector>

#include "tools/scene/scene.h"

namespace engine_vs_peer {

inline constexpr size_t kSystems = 2;
inline constexpr double kBlockSeconds = 0.01;
enum System : size_t { kEngine, kPeer };

struct Outputs {
    std::vector<float> rows[kSystems];           // full scale 1.0
    std::vector<double> microseconds[kSystems];  // of processor time, one a block: its shortest of all passes
};

// Name and version of the loaded build, and the kernels that the wrapper runs it with.
struct EngineText {
    std::string build;
    std::string version;
    std::string kernels;
};
EngineText describeEngine();

// Samples by which the output of a system lags the centre microphone.
struct Lags {
    double of[kSystems];
};

// From a talker in silence, in which they are certain. needs: a loaded engine.
Lags measureLags(double array_radius_m);

struct RunOptions {
    bool tell_engine = false;  // the talker's position; else it searches for the talker
    int passes = 1;            // at least 1
};

// Both from their initial state in each pass. The peer is given the position that the talker has at each moment. The
// output of every pass is the same; a block takes longer in one where the machine did something else.
// needs: a loaded engine. fails: std::runtime_error when the output of a pass is another.
Outputs runBoth(const se_scene::Scene& scene, const se_scene::SceneOptions& options, const RunOptions& run);

}  // namespace engine_vs_peer
