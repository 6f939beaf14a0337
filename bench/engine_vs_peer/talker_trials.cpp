// A talker, or two: what is left of them and of what disturbs them.
#include "bench/engine_vs_peer/talker_measure.h"
#include "bench/engine_vs_peer/trials.h"

namespace engine_vs_peer {
namespace {

using se_scene::NoiseColour;
using se_scene::Random;
using se_scene::SceneOptions;

constexpr uint32_t kFirstNumber = 50;  // after those of the echo trials

constexpr Span kInNoise{2, 12};
constexpr Span kFirstWords{2, 4};
constexpr int kOnsets = 4;
constexpr double kOnset = 0.6;         // seconds
constexpr double kOnsetShare = 0.668;  // -3.5 dB
constexpr Span kDoubleTalk{3, 7};
constexpr Span kFarEndToo{3, 10};
constexpr Span kWalk{4, 6};
constexpr Span kWalkAndAfter{4, 8};
constexpr double kFirstTurn = 1;
constexpr double kTurn = 3;
constexpr double kTwoTalkersEnd = 13;

constexpr Target kNoTarget{Aim::kAtLeast};

// The echo is louder than the talker, because the loudspeaker is nearer.
SceneOptions doubleTalk(const TrialOptions& options, uint32_t number) {
    SceneOptions scene = drawScene(options, number, kFarEndToo.end_s);
    scene.echo_level_dbfs = kTalkerDbfs + 6;
    scene.talker_start_s = kDoubleTalk.begin_s;
    scene.talker_end_s = kDoubleTalk.end_s;
    return scene;
}

SceneOptions inNoise(const TrialOptions& options, uint32_t number, double snr_db) {
    SceneOptions scene = drawScene(options, number, kInNoise.end_s);
    scene.talker_start_s = kInNoise.begin_s;
    scene.diffuse_noise_dbfs = kTalkerDbfs - snr_db;
    return scene;
}

SceneOptions firstWords(const TrialOptions& options, uint32_t number) {
    SceneOptions scene = drawScene(options, number, kFirstWords.end_s);
    scene.talker_start_s = kFirstWords.begin_s;
    scene.diffuse_noise_dbfs = kTalkerDbfs;
    return scene;
}

std::vector<Figure> measureDoubleTalk(const Recording& recording) {
    constexpr double kEchoAlone = 40;  // dB above the talker
    const TalkerMeasure measure(recording, kDoubleTalk);
    std::vector<Figure> figures = measure.usual({Aim::kAtLeast, 15});
    const Spans alone =
        whereLower(recording.scene.talker[0], recording.scene.echo[0], kEchoAlone, kFarEndToo);
    figures.insert(figures.begin(), measure.loss("ERLE where the talker pauses", {Aim::kAtLeast, 33}, alone));
    return figures;
}

std::vector<Figure> measureClipping(const Recording& recording) {
    return TalkerMeasure(recording, kDoubleTalk).usual({Aim::kNotBelowPeer});
}

Figure noiseInPauses(const TalkerMeasure& measure, const Recording& recording, double target) {
    constexpr double kNoiseAlone = 15;  // dB above the talker
    const Spans pauses =
        whereLower(recording.scene.talker[0], recording.scene.noise[0], kNoiseAlone, kInNoise);
    return measure.loss("noise lowered in pauses", {Aim::kAtLeast, target}, pauses);
}

std::vector<Figure> measureNoise(const Recording& recording) {
    const TalkerMeasure measure(recording, kInNoise);
    std::vector<Figure> figures = measure.usual({Aim::kAtLeast, 4});
    figures.push_back(noiseInPauses(measure, recording, 14));
    figures.push_back(measure.delay());
    return figures;
}

std::vector<Figure> measureBabble(const Recording& recording) {
    const TalkerMeasure measure(recording, kInNoise);
    std::vector<Figure> figures = measure.usual(kNoTarget);
    figures.push_back(noiseInPauses(measure, recording, 12));
    return figures;
}

// The first sound that is within 20 dB of the talker's level: it may start with a pause.
double onsetOf(const Row& talker, const Span& span) {
    constexpr double kPiece = 0.02;
    const double weakest_dbfs = se_scene::activeLevelDbfs(talker) - 20;
    double begin_s = span.begin_s;
    while (begin_s < span.end_s &&
           se_scene::levelDbfs(se_scene::excerpt(talker, begin_s, begin_s + kPiece)) < weakest_dbfs) {
        begin_s += kPiece;
    }
    return begin_s;
}

std::vector<Figure> measureLoudNoise(const Recording& recording) {
    return TalkerMeasure(recording, kInNoise).usual(kNoTarget);
}

// Of all beginnings together: each counts by its energy, as the noise that happens to look like a weak one would otherwise be
// many times that talker.
std::vector<Figure> figuresOfOnsets(const std::vector<Recording>& recordings) {
    Figure all{"share of the first 0.6 s", "", {Aim::kAtLeast, kOnsetShare}, {}};
    double energy = 0;
    for (const Recording& recording : recordings) {
        const TalkerMeasure measure(recording, kFirstWords);
        const double begin_s = onsetOf(measure.direct(), kFirstWords);
        const Span onset{begin_s, begin_s + kOnset};
        const Figure one = measure.share(all.name.c_str(), all.target, {onset});
        const double weight =
            se_scene::powerOf(se_scene::excerpt(measure.direct(), onset.begin_s, onset.end_s));
        for (const System s : {kEngine, kPeer}) all.values[s] += weight * one.values[s];
        energy += weight;
    }
    for (double& value : all.values) value /= energy;
    return {all};
}

std::vector<Figure> measureDeadMicrophone(const Recording& recording) {
    return TalkerMeasure(recording, kInNoise).usual(kNoTarget);
}

std::vector<Figure> measureTwoTalkers(const Recording& recording) {
    const TalkerMeasure measure(recording, {kFirstTurn, kTwoTalkersEnd});
    Spans turns[2];
    for (double begin_s = kFirstTurn; begin_s < kTwoTalkersEnd; begin_s += kTurn) {
        turns[talkerAt(recording.options, begin_s + kTurn / 2)].push_back({begin_s, begin_s + kTurn});
    }
    return {measure.gain("SI-SDR gain", {Aim::kAtLeast, 0.6}, {{kFirstTurn, kTwoTalkersEnd}}),
            measure.level("first talker's level", kTalkerLevel, turns[0]),
            measure.level("second talker's level", kTalkerLevel, turns[1]), measure.understood()};
}

std::vector<Figure> measureWalking(const Recording& recording) {
    return TalkerMeasure(recording, kWalkAndAfter).usual({Aim::kAtLeast, 1.5});
}

struct TalkerTrial {
    const char* name;
    const char* title;
    SceneOptions (*scene)(const TrialOptions& options, uint32_t number);
    std::vector<Figure> (*measure)(const Recording& recording);
};

const TalkerTrial kTalkerTrials[] = {
    {"double-talk", "double talk", doubleTalk, measureDoubleTalk},
    {"clipping", "double talk, loudspeaker clips",
     [](const TrialOptions& options, uint32_t number) {
         SceneOptions scene = doubleTalk(options, number);
         scene.loudspeaker_limit_dbfs = scene.far_end_level_dbfs + 6;
         return scene;
     },
     measureClipping},
    {"noise", "stationary noise",
     [](const TrialOptions& options, uint32_t number) { return inNoise(options, number, options.snr_db); },
     measureNoise},
    {"babble", "babble",
     [](const TrialOptions& options, uint32_t number) {
         SceneOptions scene = inNoise(options, number, options.snr_db);
         scene.diffuse_noise_colour = NoiseColour::kBabble;
         return scene;
     },
     measureBabble},
    {"loud-noise", "stationary noise as loud as the talker",
     [](const TrialOptions& options, uint32_t number) { return inNoise(options, number, 0); },
     measureLoudNoise},
    {"dead-microphone", "noise, a dead microphone",
     [](const TrialOptions& options, uint32_t number) {
         SceneOptions scene = inNoise(options, number, options.snr_db);
         // Any but the centre one, which the figures compare with.
         scene.dead_channel = 2 + static_cast<int>(drawerOf(scene).below(6));
         return scene;
     },
     measureDeadMicrophone},
    {"two-talkers", "two talkers in turn",
     [](const TrialOptions& options, uint32_t number) {
         SceneOptions scene = drawScene(options, number, kTwoTalkersEnd);
         scene.talker_start_s = kFirstTurn;
         scene.second_talker_azimuth_deg = scene.echo_azimuth_deg;  // where no loudspeaker is
         scene.turn_s = kTurn;
         scene.sensor_noise_dbfs = kTalkerDbfs - 40;
         return scene;
     },
     measureTwoTalkers},
    {"walking", "talker walks 90 degrees in 2 s",
     [](const TrialOptions& options, uint32_t number) {
         SceneOptions scene = drawScene(options, number, kWalkAndAfter.end_s + 0.5);
         scene.walk_deg = drawerOf(scene).uniform() < 0.5 ? 90 : -90;
         scene.walk_start_s = kWalk.begin_s;
         scene.walk_s = kWalk.end_s - kWalk.begin_s;
         scene.sensor_noise_dbfs = kTalkerDbfs - 40;
         return scene;
     },
     measureWalking},
};

}  // namespace

std::vector<Trial> talkerTrials() {
    std::vector<Trial> trials;
    uint32_t number = kFirstNumber;
    for (const TalkerTrial& trial : kTalkerTrials) {
        const auto scenes = [&trial, number](const TrialOptions& options) {
            return std::vector{trial.scene(options, number)};
        };
        const auto measure = [&trial](const std::vector<Recording>& recordings) {
            return trial.measure(recordings[0]);
        };
        trials.push_back({trial.name, trial.title, scenes, measure});
        ++number;
    }
    const auto onsets = [number](const TrialOptions& options) {
        std::vector<SceneOptions> scenes;
        for (uint32_t i = 0; i < kOnsets; ++i) scenes.push_back(firstWords(options, number + i));
        return scenes;
    };
    trials.push_back({"onsets", "first words in noise as loud", onsets, figuresOfOnsets});
    return trials;
}

}  // namespace engine_vs_peer
