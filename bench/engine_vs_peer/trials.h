// The scenes that both systems process, and the figures of each.
#pragma once

#include "bench/engine_vs_peer/systems.h"

namespace engine_vs_peer {

struct TrialOptions {
    double seconds = 12;  // length of a scene
    uint32_t seed = 1;
    double azimuth_deg = 60;  // of the talker
    double snr_db = 14;       // of the talker while speaking over the noise, in the noise scenes
    double array_radius_m = 0.0425;
    bool tell_engine = false;  // the talker's position, as the nearest of its look directions
};

enum class Better { kHigher, kNearerZero };

struct Figure {
    const char* scene;
    const char* name;
    Better better;
    bool of_echo;  // counts only for a system that leaves the talker alone
    double decibels[kSystems];
};

struct Trial {
    std::vector<Figure> figures;
    std::vector<double> microseconds[kSystems];  // one a block
};

// The talker's level change of this scene decides whether echo figures count.
inline constexpr const char* kDoubleTalk = "double talk";
inline constexpr const char* kLevelChange = "talker's level change";

struct TrialKind {
    const char* name;
    Trial (*run)(const TrialOptions& options);
};
inline constexpr size_t kTrialKinds = 3;
extern const TrialKind kTrials[kTrialKinds];

}  // namespace engine_vs_peer
