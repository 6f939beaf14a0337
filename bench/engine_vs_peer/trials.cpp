#include "bench/engine_vs_peer/trials.h"

#include "bench/engine_vs_peer/figures.h"

namespace engine_vs_peer {
namespace {

using se_scene::kSilent;
using se_scene::Scene;
using se_scene::SceneOptions;

constexpr double kTalkerDbfs = -26;
constexpr double kQuietDbfs = -85;  // of the sensors in scenes without noise figures

// The measured parts of a scene of this length.
struct Times {
    double unit_s;  // a twelfth of the scene

    Span firstPart() const { return {0, unit_s}; }
    Span converged() const { return {4 * unit_s, pathChange()}; }
    double pathChange() const { return 6 * unit_s; }
    Span afterPathChange() const { return {pathChange(), pathChange() + unit_s}; }
    Span laterAfterPathChange() const { return {pathChange() + unit_s, pathChange() + 2 * unit_s}; }
    Span doubleTalk() const { return {4 * unit_s, 8 * unit_s}; }
    Span inNoise() const { return {2 * unit_s, 12 * unit_s}; }
};

Times timesOf(const TrialOptions& options) {
    return {options.seconds / 12};
}

SceneOptions sceneOptions(const TrialOptions& options) {
    SceneOptions scene;
    scene.seconds = options.seconds;
    scene.seed = options.seed;
    scene.array_radius_m = options.array_radius_m;
    scene.talker_azimuth_deg = options.azimuth_deg;
    scene.talker_level_dbfs = kTalkerDbfs;
    scene.sensor_noise_dbfs = kQuietDbfs;
    return scene;
}

// A loudspeaker beside the array in a room, as loud as the talker.
SceneOptions echoOptions(const TrialOptions& options) {
    SceneOptions scene = sceneOptions(options);
    scene.reverberation_s = 0.3;
    scene.echo_level_dbfs = kTalkerDbfs;
    return scene;
}

template <class Measure>
Figure figure(const char* scene, const char* name, Better better, bool of_echo, const Measure& measure) {
    return {scene, name, better, of_echo, {measure(kEngine), measure(kPeer)}};
}

void addTimes(const Outputs& outputs, Trial& trial) {
    for (size_t s = 0; s < kSystems; ++s) {
        trial.microseconds[s].insert(trial.microseconds[s].end(), outputs.microseconds[s].begin(),
                                     outputs.microseconds[s].end());
    }
}

struct Lags {
    double samples[kSystems];
};

// The talker's direct sound at the centre microphone: what a beam former should keep. With the reflections in the
// reference, a beam that suppresses more of them would get a lower figure.
Row directSound(const SceneOptions& options) {
    SceneOptions open = options;
    open.reverberation_s = 0;
    open.echo_level_dbfs = open.sensor_noise_dbfs = open.diffuse_noise_dbfs = kSilent;
    return makeScene(open).talker[0];
}

Lags addTalkerFigures(const char* name, const SceneOptions& options, const Scene& scene, const Span& span,
                      const Outputs& outputs, Trial& trial) {
    const Row talker = directSound(options);
    const TalkerFigures before = talkerFigures(talker, scene.mixture()[0], 0, span);
    const double level_before = talkerFigures(talker, scene.talker[0], 0, span).level_db;
    Lags lags;
    TalkerFigures after[kSystems];
    for (size_t s = 0; s < kSystems; ++s) {
        lags.samples[s] = lagOf(talker, outputs.rows[s], span);
        after[s] = talkerFigures(talker, outputs.rows[s], lags.samples[s], span);
    }
    trial.figures.push_back(figure(name, kLevelChange, Better::kNearerZero, false,
                                   [&](System s) { return after[s].level_db - level_before; }));
    trial.figures.push_back(figure(name, "SI-SDR improvement", Better::kHigher, false,
                                   [&](System s) { return after[s].sdr_db - before.sdr_db; }));
    addTimes(outputs, trial);
    return lags;
}

void addEchoFigures(const Scene& scene, const Times& times, const Lags& lags, const Outputs& outputs,
                    Trial& trial) {
    struct Stretch {
        const char* name;
        Span span;
    };
    const Stretch stretches[] = {{"ERLE, first second", times.firstPart()},
                                 {"ERLE, converged", times.converged()},
                                 {"ERLE, first second after a path change", times.afterPathChange()},
                                 {"ERLE, second second after it", times.laterAfterPathChange()}};
    const Row microphone = scene.mixture()[0];
    for (const Stretch& stretch : stretches) {
        trial.figures.push_back(figure("far end alone", stretch.name, Better::kHigher, true, [&](System s) {
            return echoLossDb(microphone, outputs.rows[s], lags.samples[s], stretch.span);
        }));
    }
    addTimes(outputs, trial);
}

Trial runEcho(const TrialOptions& options) {
    const Times times = timesOf(options);
    Trial trial;
    SceneOptions both = echoOptions(options);
    both.talker_start_s = times.doubleTalk().begin_s;
    both.talker_end_s = times.doubleTalk().end_s;
    const Scene double_talk = makeScene(both);
    const Lags lags = addTalkerFigures(kDoubleTalk, both, double_talk, times.doubleTalk(),
                                       runBoth(double_talk, both, options.tell_engine), trial);

    SceneOptions alone = echoOptions(options);
    alone.talker_level_dbfs = kSilent;
    alone.echo_path_change_s = times.pathChange();
    const Scene far_end_alone = makeScene(alone);
    addEchoFigures(far_end_alone, times, lags, runBoth(far_end_alone, alone, options.tell_engine), trial);
    return trial;
}

Trial runNoise(const char* name, const TrialOptions& options, double SceneOptions::*noise_dbfs) {
    const Times times = timesOf(options);
    SceneOptions noisy = sceneOptions(options);
    noisy.talker_start_s = times.inNoise().begin_s;
    noisy.*noise_dbfs = kTalkerDbfs - options.snr_db;
    const Scene scene = makeScene(noisy);
    Trial trial;
    addTalkerFigures(name, noisy, scene, times.inNoise(), runBoth(scene, noisy, options.tell_engine), trial);
    return trial;
}

Trial runDiffuseNoise(const TrialOptions& options) {
    return runNoise("diffuse pink noise", options, &SceneOptions::diffuse_noise_dbfs);
}

Trial runSensorNoise(const TrialOptions& options) {
    return runNoise("sensor noise", options, &SceneOptions::sensor_noise_dbfs);
}

}  // namespace

const TrialKind kTrials[kTrialKinds] = {
    {"echo", runEcho}, {"diffuse-noise", runDiffuseNoise}, {"sensor-noise", runSensorNoise}};

}  // namespace engine_vs_peer
