// engine_vs_peer: the engine compared with a public library, on the same scenes.
// Exit codes: 0 done, with any result; 1 failure; 2 wrong usage.
#include <iostream>
#include <optional>
#include <stdexcept>
#include <string>

#include "bench/engine_vs_peer/picture.h"
#include "bench/engine_vs_peer/run_trials.h"
#include "host/output/output_file.h"
#include "host/output/temporaries.h"
#include "kernel_check/program/engine.h"
#include "kernel_check/program/program.h"
#include "webrtc_common/se_wrapper/engine/start_up.h"

namespace engine_vs_peer {
namespace {

constexpr const char* kName = "engine_vs_peer";

constexpr const char* kDescription =
    "Compares the engine, used through the wrapper as in a host, with SpeexDSP's echo canceller and\n"
    "preprocessor after a delay-and-sum of the same microphones. Both process the same simulated scenes,\n"
    "block by block in turn. Rooms, positions, voices and playback delays are drawn at random, of each seed\n"
    "others. A figure is the mean of the seeds with its 95 % confidence interval.\n"
    "\n"
    "ERLE             decibels by which the output is lower than the centre microphone where only the far\n"
    "                 end is heard\n"
    "SI-SDR gain      talker over the rest, at the output against the centre microphone, 300 to 7000 Hz. "
    "The\n"
    "                 talker is its direct sound; its reflections belong to the rest.\n"
    "talker's level   of that direct sound in the output, against the centre microphone, 300 to 7000 Hz\n"
    "STOI             intelligibility of the output, 0 to 1\n"
    "time per block   processor time of a block of 10 ms, both in one process: the shortest of several "
    "passes\n"
    "                 over the same scene, so that what else the machine did is left out\n"
    "ahead            the better one, if the confidence interval of the difference does not contain 0\n"
    "reached          the engine's mean; of a talker's level the mean of its magnitude\n"
    "\n"
    "The engine cancels the echo of each microphone, then searches for the talker. The peer is given the\n"
    "talker's position at every moment, steers there with fractional delays, and cancels the echo once, "
    "after\n"
    "its beam. Its canceller has the engine's tail. Its preprocessor suppresses the residual echo and "
    "reduces\n"
    "noise; gain control is off.";

constexpr const char* kExamples =
    "Examples:\n"
    "  engine_vs_peer                                       everything, a few minutes\n"
    "  engine_vs_peer --scene two-talkers --seeds 20        one scene, narrower intervals\n"
    "  engine_vs_peer --quick                               everything once, without rooms\n"
    "  engine_vs_peer --voices build/real_speech/voices     real speech; bench/real_speech/run makes the "
    "folder\n"
    "  engine_vs_peer --passes 9                            times on a busy machine\n"
    "  engine_vs_peer --engine se_lib_harborv006 --array-radius 0.035\n"
    "                                                       the build for another array\n"
    "  engine_vs_peer --json > figures.json                 with each seed's figures\n"
    "  engine_vs_peer --seed 101 --document docs/benchmarks renew the document of this build";

constexpr int kSeeds = 8;

struct Options {
    std::string engine, scene, voices, document;
    bool json = false, quick = false;
    int seeds = kSeeds, passes = 3;
    TrialOptions trial;
};

std::vector<Trial> allTrials() {
    std::vector<Trial> trials = echoTrials();
    for (Trial& trial : talkerTrials()) trials.push_back(std::move(trial));
    return trials;
}

std::vector<std::string> sceneNames() {
    std::vector<std::string> names;
    for (const Trial& trial : allTrials()) names.push_back(trial.name);
    return names;
}

void addOptions(CLI::App& app, Options& options) {
    app.add_option("--scene", options.scene, "Only this scene")
        ->type_name("NAME")
        ->check(CLI::IsMember(sceneNames()));
    app.add_option("--seed", options.trial.seed, "First seed of all that is drawn")->capture_default_str();
    CLI::Option* const seeds = app.add_option("--seeds", options.seeds, "Number of seeds, consecutive");
    seeds->capture_default_str()->check(CLI::Range(1, 1000));
    app.add_flag("--quick", options.quick, "One seed, and no rooms: rough figures in less time")
        ->excludes(seeds);
    app.add_option(
           "--voices", options.voices,
           "Recorded speech: a folder of talkers, at least three, each a folder of WAV files, 16 kHz, mono "
           "(default: synthetic voices)")
        ->type_name("DIR");
    app.add_option("--passes", options.passes,
                   "Passes over each scene; the shortest time of each block counts")
        ->capture_default_str()
        ->check(CLI::Range(1, 1000));
    app.add_option("--snr", options.trial.snr_db, "Talker over noise, dB; not where they are equally loud")
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
    app.add_option("--document", options.document, "Also write the table and a picture into this folder")
        ->type_name("DIR");
    app.footer(kExamples);
}

std::vector<Job> jobsOf(const std::vector<Trial>& trials, const Options& options) {
    std::vector<Job> jobs;
    for (int i = 0; i < options.seeds; ++i) {
        TrialOptions of_seed = options.trial;
        of_seed.seed += static_cast<uint32_t>(i);
        for (const Trial& trial : trials) {
            if (options.scene.empty() || options.scene == trial.name) jobs.push_back({&trial, of_seed});
        }
    }
    return jobs;
}

// The table and the picture of a run.
class Document {
  public:
    // Before the run, so that an unwritable folder is reported early.
    Document(const std::string& folder, const std::string& name)
        : picture_name_(name + ".svg"),
          table_(folder + "/" + name + ".md"),
          picture_(folder + "/" + picture_name_) {}

    void write(const Report& report, const RunText& run) {
        draw(report, picture_);
        table_.write(toMarkdown(report, run, picture_name_));
        table_.commit();
        picture_.commit();
    }

  private:
    std::string picture_name_;
    se_output::OutputFile table_;
    se_output::Picture picture_;
};

std::vector<std::string> namesOf(const RecordedTalkers& talkers) {
    std::vector<std::string> names;
    for (const RecordedTalker& talker : talkers) names.push_back(talker.name);
    return names;
}

// Another build of the engine has documents of its own.
std::string documentName(const Options& options) {
    const std::string name = options.voices.empty() ? "engine_vs_peer" : "real_speech";
    return options.engine.empty() ? name : name + "." + options.engine;
}

void run(Options& options) {
    if (options.quick) {
        options.seeds = 1;
        options.trial.free_field = true;
    }
    std::optional<Document> document;
    if (!options.document.empty()) document.emplace(options.document, documentName(options));
    RecordedTalkers talkers;
    if (!options.voices.empty()) talkers = readTalkers(options.voices);
    program::startEngine(kName, options.engine, quill::media::se_wrapper::initSignalEssence);
    const std::vector<Trial> trials = allTrials();
    const Report report = runTrials(jobsOf(trials, options), talkers, options.passes);
    const RunText text{describeEngine(), options.trial, options.seeds, options.passes, namesOf(talkers)};
    std::cout << (options.json ? toJson(report, text).dump(2) + "\n" : toText(report, text)) << std::flush;
    if (!std::cout) throw std::runtime_error("cannot write to standard output; is there space left?");
    if (document) document->write(report, text);
}

}  // namespace
}  // namespace engine_vs_peer

int main(int argc, char** argv) {
    using namespace engine_vs_peer;
    Options options;
    CLI::App app(kDescription, kName);
    addOptions(app, options);
    return program::run(app, argc, argv, [&] {
        se_output::removeTemporaryFilesOnSignals();
        run(options);
        return program::kDone;
    });
}
