// engine_vs_peer: the engine compared with a public library, on the same scenes.
// Exit codes: 0 done, with any result; 1 failure; 2 wrong usage.
#include <iostream>
#include <stdexcept>
#include <string>

#include "bench/engine_vs_peer/report.h"
#include "kernel_check/program/engine.h"
#include "kernel_check/program/program.h"
#include "webrtc_common/se_wrapper/engine/start_up.h"

namespace engine_vs_peer {
namespace {

constexpr const char* kName = "engine_vs_peer";

constexpr const char* kDescription =
    "Compares the engine, used through the wrapper as in a host, with SpeexDSP's echo canceller and\n"
    "preprocessor after a delay-and-sum of the same microphones. Both process the same simulated scenes,\n"
    "block by block in turn. Each figure is the mean over the seeds.\n"
    "\n"
    "echo           a room of 0.3 s with a loudspeaker beside the array, the echo as loud as the talker:\n"
    "               far end and talker at once, then the far end alone, with a change of path half-way\n"
    "diffuse-noise  a talker in diffuse pink noise\n"
    "sensor-noise   a talker in the microphones' own white noise\n"
    "\n"
    "ERLE                 decibels by which the output is lower than the centre microphone while only the\n"
    "                     far end is active. It counts only for a system that keeps the talker within 3 dB\n"
    "                     in double talk: silence would have the best ERLE.\n"
    "SI-SDR improvement   talker over the rest, at the output against the centre microphone, 300 to\n"
    "                     7000 Hz. The talker is its direct sound; its reflections belong to the rest.\n"
    "talker's level       of the part of the output that is a multiple of that direct sound, against the\n"
    "  change             centre microphone, 300 to 7000 Hz\n"
    "time per block       median, both in one process; on a busy machine only the ratio is reliable\n"
    "\n"
    "The engine cancels the echo of each microphone, then searches for the talker. The peer is given the\n"
    "talker's position, steers there with fractional delays, and cancels the echo once, after its beam.\n"
    "Its canceller has the engine's tail. Its preprocessor suppresses the residual echo and reduces noise;\n"
    "gain control is off.";

constexpr const char* kExamples =
    "Examples:\n"
    "  engine_vs_peer                                       everything, about a minute\n"
    "  engine_vs_peer --scene sensor-noise --snr 5          louder noise\n"
    "  engine_vs_peer --seconds 3 --seeds 1                 a quick run\n"
    "  engine_vs_peer --engine se_lib_harborv006 --array-radius 0.035\n"
    "                                                       the build for another array\n"
    "  engine_vs_peer --json > figures.json                 with each seed's figures";

struct Options {
    std::string engine, scene;
    bool json = false;
    int seeds = 5;
    TrialOptions trial;
};

std::vector<std::string> sceneNames() {
    std::vector<std::string> names;
    for (const TrialKind& kind : kTrials) names.push_back(kind.name);
    return names;
}

void addOptions(CLI::App& app, Options& options) {
    app.add_option("--scene", options.scene, "Only this scene")
        ->type_name("NAME")
        ->check(CLI::IsMember(sceneNames()));
    app.add_option("--seconds", options.trial.seconds,
                   "Length of a scene; its parts have their named length with 12 and scale with it")
        ->capture_default_str()
        ->check(CLI::Range(3.0, 120.0));
    app.add_option("--seed", options.trial.seed, "First seed of voices and noises")->capture_default_str();
    app.add_option("--seeds", options.seeds, "Number of seeds, consecutive")
        ->capture_default_str()
        ->check(CLI::Range(1, 1000));
    app.add_option("--azimuth", options.trial.azimuth_deg,
                   "Azimuth of the talker, degrees; the engine's beams are 30 apart")
        ->capture_default_str()
        ->check(CLI::Range(-360.0, 360.0));
    app.add_option("--snr", options.trial.snr_db, "Talker over noise in the noise scenes, dB")
        ->capture_default_str()
        ->check(CLI::Range(-20.0, 60.0));
    app.add_option("--engine", options.engine, "Engine build in selibs/ (default: the wrapper's choice)")
        ->type_name("NAME");
    app.add_option("--array-radius", options.trial.array_radius_m, "Radius of the engine's array, metres")
        ->capture_default_str()
        ->check(CLI::Range(0.005, 0.2));
    app.add_flag("--tell-engine", options.trial.tell_engine,
                 "Give the talker's position to the engine, too: shows the cost of its search");
    app.add_flag("--json", options.json, "Print JSON");
    app.footer(kExamples);
}

std::vector<Trial> runTrials(const Options& options) {
    std::vector<Trial> trials;
    for (int i = 0; i < options.seeds; ++i) {
        TrialOptions trial = options.trial;
        trial.seed += static_cast<uint32_t>(i);
        for (const TrialKind& kind : kTrials) {
            if (options.scene.empty() || options.scene == kind.name) trials.push_back(kind.run(trial));
        }
    }
    return trials;
}

void run(const Options& options) {
    program::startEngine(kName, options.engine, quill::media::se_wrapper::initSignalEssence);
    const Report report = makeReport(runTrials(options));
    const EngineText engine = describeEngine();
    if (options.json) {
        std::cout << toJson(report, engine, options.trial, options.seeds).dump(2) << std::endl;
    } else {
        std::cout << toText(report, engine, options.trial, options.seeds) << std::flush;
    }
    if (!std::cout) throw std::runtime_error("cannot write to standard output; is there space left?");
}

}  // namespace
}  // namespace engine_vs_peer

int main(int argc, char** argv) {
    using namespace engine_vs_peer;
    Options options;
    CLI::App app(kDescription, kName);
    addOptions(app, options);
    return program::run(app, argc, argv, [&] {
        run(options);
        return program::kDone;
    });
}
