#include "bench/engine_vs_peer/run_trials.h"

#include <algorithm>
#include <cmath>
#include <future>
#include <thread>
#include <utility>

#include "bench/engine_vs_peer/drawn_speech.h"
#include "tools/scene/rows.h"

namespace engine_vs_peer {
namespace {

using se_scene::Row;

constexpr double kHighestPeak = 0.99;
constexpr size_t kMostAtOnce = 8;  // jobs whose recordings are kept at the same time

double peakOf(const Row& row) {
    double peak = 0;
    for (const float sample : row) peak = std::max(peak, std::abs(static_cast<double>(sample)));
    return peak;
}

// A scene that would overload a microphone is lowered as a whole, so that only the loudspeaker clips, where it is to clip.
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

// Without talkers the voices are synthetic.
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

}  // namespace

Report runTrials(const std::vector<Job>& jobs, const RecordedTalkers& talkers, int passes) {
    Report report;
    const Lags lags = measureLags(jobs.front().options.array_radius_m);
    const size_t at_once = std::clamp<size_t>(std::thread::hardware_concurrency(), 1, kMostAtOnce);
    for (size_t first = 0; first < jobs.size(); first += at_once) {
        std::vector<std::future<std::vector<Recording>>> made;
        for (size_t i = first; i < std::min(first + at_once, jobs.size()); ++i) {
            made.push_back(
                std::async(std::launch::async, [&, i] { return makeRecordings(jobs[i], talkers); }));
        }
        for (const auto& one : made) one.wait();
        for (size_t i = 0; i < made.size(); ++i) {
            const Job& job = jobs[first + i];
            std::vector<Recording> recordings = made[i].get();
            for (Recording& recording : recordings) {
                recording.lags = lags;
                recording.outputs =
                    runBoth(recording.scene, recording.options, {job.options.tell_engine, passes});
            }
            add(*job.trial, job.options.seed, recordings, report);
        }
    }
    return report;
}

}  // namespace engine_vs_peer
