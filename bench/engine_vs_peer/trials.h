// What both systems have to do: scenes, the figures of each, and what the engine's have to reach.
#pragma once

#include <cmath>
#include <functional>
#include <string>
#include <vector>

#include "bench/engine_vs_peer/surroundings.h"
#include "bench/engine_vs_peer/systems.h"

namespace engine_vs_peer {

enum class Aim { kAtLeast, kAtMost, kWithin, kNotBelowPeer, kTimesPeer };

// Without a bound it only says what is better. kTimesPeer: at most the bound times the peer's value.
struct Target {
    Aim aim;
    double bound = NAN;
};

struct Figure {
    std::string name;
    const char* unit;  // "dB", "ms", "µs", or "" of shares and the intelligibility
    Target target;
    double values[kSystems];
};

struct Recording {
    se_scene::SceneOptions options;
    se_scene::Scene scene;
    Outputs outputs;
    Lags lags;
};

struct Trial {
    std::string name;  // lower case with hyphens, for the command line
    std::string title;
    std::function<std::vector<se_scene::SceneOptions>(const TrialOptions&)> scenes;
    std::function<std::vector<Figure>(const std::vector<Recording>&)> measure;
};

std::vector<Trial> echoTrials();
std::vector<Trial> talkerTrials();

}  // namespace engine_vs_peer
