// Rooms, positions, voices and playback delays, drawn at random from a seed.
#pragma once

#include "tools/scene/random.h"
#include "tools/scene/scene.h"

namespace engine_vs_peer {

struct TrialOptions {
    uint32_t seed = 1;
    double snr_db = 14;  // of the talker while speaking over the noise, in most scenes with noise
    double array_radius_m = 0.0425;
    bool tell_engine = false;  // the talker's position, as the nearest of its look directions
    bool free_field = false;   // no rooms: the scenes are made faster
};

inline constexpr double kTalkerDbfs = -26;

// A delay of the playback within these limits, at least a millisecond away from any multiple of a block.
double drawDelayMs(double lowest_ms, double highest_ms, se_scene::Random& random);

// A scene with a talker, a loudspeaker that is silent until it is given a level, and quiet microphones; of each
// `scene` another one.
se_scene::SceneOptions drawScene(const TrialOptions& options, uint32_t scene, double seconds);

// Of what a trial draws itself.
se_scene::Random drawerOf(const se_scene::SceneOptions& scene);

}  // namespace engine_vs_peer
