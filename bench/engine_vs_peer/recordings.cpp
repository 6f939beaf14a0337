#include "bench/engine_vs_peer/recordings.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "bench/engine_vs_peer/drawn_speech.h"
#include "tools/scene/rows.h"

namespace engine_vs_peer {
namespace {

using se_scene::Row;

constexpr double kHighestPeak = 0.99;

double peakOf(const Row& row) {
    double peak = 0;
    for (const float sample : row) peak = std::max(peak, std::abs(static_cast<double>(sample)));
    return peak;
}

void fitIntoFullScale(se_scene::Scene& scene) {
    double peak = peakOf(scene.far_end);
    for (const Row& row : scene.mixture()) peak = std::max(peak, peakOf(row));
    if (peak <= kHighestPeak) return;
    const double factor = kHighestPeak / peak;
    for (se_scene::MicrophoneRows* rows : {&scene.talker, &scene.noise, &scene.echo})
        se_scene::scale(*rows, factor);
    se_scene::scale(scene.talker_direct, factor);
    se_scene::scale(scene.far_end, factor);
}

}  // namespace

std::vector<Recording> makeRecordings(const Job& job, const RecordedTalkers& talkers) {
    std::vector<Recording> recordings;
    for (se_scene::SceneOptions& options : job.trial->scenes(job.options)) {
        if (!talkers.empty()) giveRecordedSpeech(talkers, options);
        se_scene::Scene scene = makeScene(options);
        fitIntoFullScale(scene);
        recordings.push_back({std::move(options), std::move(scene), {}, {}});
    }
    return recordings;
}

}  // namespace engine_vs_peer
