// The far end alone: how much of its echo is left, in each kind of trouble.
#include <algorithm>

#include "bench/engine_vs_peer/figures.h"
#include "bench/engine_vs_peer/trials.h"

namespace engine_vs_peer {
namespace {

using se_scene::Random;
using se_scene::SceneOptions;

constexpr double kFarEndDbfs = -26;

// The outputs are some 20 ms late, which is little beside the spans.
double erleDb(const Recording& recording, System system, const Span& span) {
    return lossDb(recording.scene.mixture()[0], recording.outputs.rows[system], 0, {span});
}

// A figure: the ERLE of this part of the scene.
struct Part {
    const char* name;
    Span span;
    Target target;
};

struct FarEnd {
    const char* name;
    const char* title;
    double seconds;
    std::vector<Part> parts;
    void (*change)(SceneOptions& scene, Random& random);  // of a drawn scene with echo
};

const FarEnd kFarEndTrials[] = {
    {"far-end",
     "far end alone",
     10,
     {{"ERLE, converged", {4, 10}, {Aim::kAtLeast, 40}},
      {"ERLE, including the start", {0, 10}, {Aim::kAtLeast, 30}}},
     [](SceneOptions&, Random&) {}},
    {"strong-coupling",
     "echo 6 dB above the far end",
     6,
     {{"ERLE, first 2 s", {0, 2}, {Aim::kAtLeast}},
      {"ERLE, including the start", {0, 6}, {Aim::kAtLeast, 30}}},
     [](SceneOptions& scene, Random&) {
         scene.echo_level_dbfs = kFarEndDbfs;
         scene.far_end_level_dbfs = kFarEndDbfs - 6;
     }},
    {"path-change",
     "change of the echo path",
     10,
     {{"ERLE, first 2 s after", {6, 8}, {Aim::kAtLeast}},
      {"ERLE, 2 to 4 s after", {8, 10}, {Aim::kAtLeast, 25}}},
     [](SceneOptions& scene, Random&) { scene.echo_path_change_s = 6; }},
    {"jump-20",
     "delay jumps by 20 ms",
     10,
     {{"ERLE, first 2 s after", {5, 7}, {Aim::kAtLeast, 15}},
      {"ERLE, 2 to 5 s after", {7, 10}, {Aim::kAtLeast, 30}}},
     [](SceneOptions& scene, Random&) {
         scene.echo_jump_s = 5;
         scene.echo_jump_ms = 20;
     }},
    {"jump-50",
     "delay jumps by 50 ms",
     10,
     {{"ERLE, first 2 s after", {5, 7}, {Aim::kAtLeast, 15}},
      {"ERLE, 2 to 5 s after", {7, 10}, {Aim::kAtLeast, 30}}},
     [](SceneOptions& scene, Random&) {
         scene.echo_jump_s = 5;
         scene.echo_jump_ms = 50;
     }},
    {"jump-100",
     "delay jumps by 100 ms and back",
     15,
     {{"ERLE, 2 to 5 s after", {7, 10}, {Aim::kAtLeast, 20}},
      {"ERLE, 2 to 5 s after it is back", {12, 15}, {Aim::kAtLeast, 20}}},
     [](SceneOptions& scene, Random&) {
         scene.echo_jump_s = 5;
         scene.echo_jump_ms = 100;
         scene.echo_jump_back_s = 10;
     }},
    {"drift-50",
     "clocks differ by 50 ppm",
     12,
     {{"ERLE, from 4 s", {4, 12}, {Aim::kAtLeast, 30}}},
     [](SceneOptions& scene, Random& random) { scene.echo_drift_ppm = random.uniform() < 0.5 ? 50 : -50; }},
    {"drift-100",
     "clocks differ by 100 ppm",
     12,
     {{"ERLE, from 4 s", {4, 12}, {Aim::kAtLeast, 25}}},
     [](SceneOptions& scene, Random& random) { scene.echo_drift_ppm = random.uniform() < 0.5 ? 100 : -100; }},
    {"drift-200",
     "clocks differ by 200 ppm",
     12,
     {{"ERLE, from 4 s", {4, 12}, {Aim::kAtLeast, 17}}},
     [](SceneOptions& scene, Random& random) { scene.echo_drift_ppm = random.uniform() < 0.5 ? 200 : -200; }},
    {"delay-300",
     "delay of 300 ms",
     10,
     {{"ERLE, from 4 s", {4, 10}, {Aim::kAtLeast, 20}}},
     [](SceneOptions& scene, Random& random) { scene.echo_delay_ms = drawDelayMs(300, 310, random); }},
};

SceneOptions drawFarEnd(const TrialOptions& options, uint32_t number, double seconds) {
    SceneOptions scene = drawScene(options, number, seconds);
    scene.talker_level_dbfs = se_scene::kSilent;
    scene.far_end_level_dbfs = kFarEndDbfs;
    scene.echo_level_dbfs = drawerOf(scene).uniform(kFarEndDbfs - 10, kFarEndDbfs);
    return scene;
}

Trial trialOf(const FarEnd& far_end, uint32_t number) {
    const auto scenes = [&far_end, number](const TrialOptions& options) {
        SceneOptions scene = drawFarEnd(options, number, far_end.seconds);
        Random random = drawerOf(scene);
        far_end.change(scene, random);
        return std::vector{scene};
    };
    const auto measure = [&far_end](const std::vector<Recording>& recordings) {
        std::vector<Figure> figures;
        for (const Part& part : far_end.parts) {
            const auto erle = [&](System s) { return erleDb(recordings[0], s, part.span); };
            figures.push_back({part.name, "dB", part.target, {erle(kEngine), erle(kPeer)}});
        }
        return figures;
    };
    return {far_end.name, far_end.title, scenes, measure};
}

constexpr int kDelays = 4;

// The same scene with a delay out of each quarter of the range.
std::vector<SceneOptions> scenesOfDelays(const TrialOptions& options, uint32_t number) {
    const SceneOptions scene = drawFarEnd(options, number, 4);
    Random random = drawerOf(scene);
    std::vector<SceneOptions> scenes(kDelays, scene);
    for (int i = 0; i < kDelays; ++i) {
        scenes[static_cast<size_t>(i)].echo_delay_ms =
            drawDelayMs(i * 250.0 / kDelays, (i + 1) * 250.0 / kDelays, random);
    }
    return scenes;
}

std::vector<Figure> figuresOfDelays(const std::vector<Recording>& recordings) {
    Figure lowest{"ERLE from 1 s to 4 s, lowest", "dB", {Aim::kAtLeast, 35}, {}};
    Figure spread{"its spread", "dB", {Aim::kAtMost, 8}, {}};
    for (const System system : {kEngine, kPeer}) {
        std::vector<double> erles;
        for (const Recording& recording : recordings) erles.push_back(erleDb(recording, system, {1, 4}));
        const auto [low, high] = std::minmax_element(erles.begin(), erles.end());
        lowest.values[system] = *low;
        spread.values[system] = *high - *low;
    }
    return {lowest, spread};
}

}  // namespace

std::vector<Trial> echoTrials() {
    std::vector<Trial> trials;
    uint32_t number = 0;
    for (const FarEnd& far_end : kFarEndTrials) trials.push_back(trialOf(far_end, number++));
    const auto scenes = [number](const TrialOptions& options) { return scenesOfDelays(options, number); };
    trials.insert(trials.begin() + 2, {"delays", "four delays from 0 to 250 ms", scenes, figuresOfDelays});
    return trials;
}

}  // namespace engine_vs_peer
