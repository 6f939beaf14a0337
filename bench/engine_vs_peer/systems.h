// Both systems over one recording, block by block in turn, so that other load on the machine slows both.
#pragma once

#include <string>
#include <vector>

#include "tools/scene/scene.h"

namespace engine_vs_peer {

inline constexpr size_t kSystems = 2;
enum System : size_t { kEngine, kPeer };

struct Outputs {
    std::vector<float> rows[kSystems];           // full scale 1.0
    std::vector<double> microseconds[kSystems];  // of processor time, one a block
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

// Both from their initial state. The peer is given the position that the talker has at each moment; the engine
// searches for the talker itself, unless `tell_engine`.
// needs: a loaded engine.
Outputs runBoth(const se_scene::Scene& scene, const se_scene::SceneOptions& options, bool tell_engine);

}  // namespace engine_vs_peer
