#include "bench/engine_vs_peer/surroundings.h"

#include <cmath>

namespace engine_vs_peer {
namespace {

using se_scene::Random;
using se_scene::SceneOptions;
using se_scene::Stream;

constexpr uint32_t kMostScenes = 100;  // of a seed
constexpr double kBlockMs = 10;
constexpr double kQuietDbfs = -85;

double drawAzimuth(Random& random) {
    return random.uniform(0, 360);
}

// Another direction, at least 60 degrees away.
double drawAzimuthBeside(double azimuth_deg, Random& random) {
    return std::fmod(azimuth_deg + random.uniform(60, 300), 360);
}

}  // namespace

double drawDelayMs(double lowest_ms, double highest_ms, Random& random) {
    const double blocks = std::floor(random.uniform(lowest_ms, highest_ms) / kBlockMs);
    return kBlockMs * (blocks + random.uniform(0.1, 0.9));
}

SceneOptions drawScene(const TrialOptions& options, uint32_t scene, double seconds) {
    SceneOptions drawn;
    drawn.seconds = seconds;
    drawn.seed = options.seed * kMostScenes + scene;
    drawn.array_radius_m = options.array_radius_m;

    Random random(drawn.seed, Stream::kSurroundings);
    drawn.room.length_m = random.uniform(4, 8);
    drawn.room.width_m = random.uniform(3.6, 6);
    drawn.room.height_m = random.uniform(2.3, 3.2);
    drawn.reverberation_s = random.uniform(0.2, 0.5);
    if (options.free_field) drawn.reverberation_s = 0;

    drawn.talker_level_dbfs = kTalkerDbfs;
    drawn.talker_azimuth_deg = drawAzimuth(random);
    drawn.talker_distance_m = random.uniform(0.7, 1.4);
    drawn.talker_pitch_hz = random.uniform(95, 230);
    drawn.second_talker_pitch_hz = random.uniform(95, 230);
    drawn.far_end_pitch_hz = random.uniform(95, 230);

    drawn.echo_azimuth_deg = drawAzimuthBeside(drawn.talker_azimuth_deg, random);
    drawn.echo_azimuth_after_deg = drawAzimuthBeside(drawn.echo_azimuth_deg, random);
    drawn.echo_distance_m = random.uniform(0.25, 0.4);
    drawn.echo_delay_ms = drawDelayMs(0, 250, random);
    drawn.sensor_noise_dbfs = kQuietDbfs;
    return drawn;
}

Random drawerOf(const SceneOptions& scene) {
    return {scene.seed, Stream::kTrial};
}

}  // namespace engine_vs_peer
