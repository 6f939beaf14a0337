// `se_host process`: a recording through an engine.
#include <unistd.h>

#include <boost/timer/progress_display.hpp>
#include <iostream>
#include <memory>

#include "host/engine/array_setting.h"
#include "host/output/errors.h"
#include "tools/se_host/commands/commands.h"
#include "tools/se_host/commands/engine_options.h"
#include "tools/se_host/commands/output_paths.h"
#include "tools/se_host/commands/print_json.h"
#include "tools/se_host/commands/recording_options.h"
#include "tools/se_host/commands/second_run.h"
#include "tools/se_host/commands/summary.h"
#include "tools/se_host/commands/tuned_engine.h"
#include "tools/se_host/diags/diag_trace.h"
#include "tools/se_host/sound/resample.h"
#include "tools/se_host/sound/sounds_picture.h"
#include "webrtc_common/se_wrapper.h"

namespace se_host {
namespace {

namespace se = quill::media::se_wrapper;

constexpr const char* kProcessExamples =
    "Examples:\n"
    "  se_host process meeting.wav talker.wav\n"
    "  se_host process meeting.wav talker.wav --far-end-channel 0\n"
    "  se_host process meeting.flac talker.wav --far-end loudspeaker.wav --json > run.json\n"
    "  se_host process meeting.wav talker.wav --engine se_lib_harborv006\n"
    "  se_host process call.wav talker.wav --far-end-channel 0 --parts call --compare-routines\n"
    "  se_host scene - | se_host process - - | aplay\n";

struct ProcessOptions {
    RecordingOptions recording;
    EngineChoice engine;
    std::string output;
    std::string parts;   // prefix of the recording's parts; empty: not known
    std::string plot;    // picture; empty: none
    std::string tuning;  // applied before; empty: none
    OnDifference on_difference = OnDifference::kStatus;
    std::vector<std::string> trace;  // the diagnostics to trace, and the file; empty: none
    bool compare_routines = false;
    bool cycles = false;
    bool bypass = false;
    bool quiet = false;
    bool json = false;
};

std::vector<Level> levelsOf(const Recording& recording) {
    std::vector<Level> levels;
    for (int channel = 0; channel < recording.microphones.channels; ++channel) {
        std::vector<int16_t> samples = channelOf(recording.microphones, channel);
        samples.resize(recording.frames);
        levels.push_back(levelOf(samples));
    }
    return levels;
}

// Where the microphones should stand.
ArrayFile arrayOf(const EngineOptions& options) {
    return options.array.empty() ? circleArray(options.device_model ? kDeviceModelRadiusMm : kDeviceRadiusMm)
                                 : givenArray();
}

Summary summarise(const ProcessOptions& options, const Engine& engine, const Recording& recording,
                  const std::optional<SceneParts>& parts, const Processed& processed) {
    Summary summary;
    summary.input = options.recording.input;
    summary.output = options.output;
    summary.far_end = farEndText(options.recording);
    summary.bypass = options.bypass;
    summary.build = engine.build;
    summary.version = engine.version;
    summary.has_beam_forming = se::g_has_beam_forming;
    summary.has_noise_tests = se::g_has_noise_tests;
    summary.blocks = recording.blocks();
    summary.seconds = recording.seconds();
    summary.channels = recording.microphones.channels;
    summary.file_sample_rate = recording.file_sample_rate;
    summary.processing_seconds = processed.processing_seconds;
    summary.input_levels = levelsOf(recording);
    summary.cycles = processed.cycles;
    summary.output_level = levelOf(processed.output);
    summary.directions = processed.directions;
    summary.talker = findTalker(processed.directions);
    summary.block_times = processed.block_times;
    summary.call = callReportOf(recording, processed, arrayOf(options.engine));
    if (parts) summary.effect = effectOf(*parts, processed.output);
    return summary;
}

std::vector<int16_t> centreMicrophoneOf(const Recording& recording) {
    std::vector<int16_t> samples = channelOf(recording.microphones, kCentreMicrophone);
    samples.resize(recording.frames);
    return samples;
}

Comparison comparisonOf(const Processed& ours, const Processed& own) {
    Comparison comparison = compare(ours.output, own.output);
    comparison.processing_seconds = own.processing_seconds;
    comparison.cycles = own.cycles;
    return comparison;
}

std::string tracePath(const ProcessOptions& options) {
    return options.trace.empty() ? "" : options.trace[1];
}

// Null unless diagnostics are asked for.
std::unique_ptr<DiagTree> tunedDiags(const ProcessOptions& options, const Engine& engine) {
    if (options.tuning.empty() && options.trace.empty()) return nullptr;
    auto diags = std::make_unique<DiagTree>();
    if (!options.tuning.empty()) {
        tuneFromFile(options.tuning, engine, *diags, options.on_difference);
    }
    return diags;
}

// The outputs of a run: all are written at its end, or none.
class Outputs {
  public:
    // Creates the files, so that an unwritable path is reported before the run.
    Outputs(const ProcessOptions& options, DiagTree* diags) : sound_(options.output) {
        if (!options.plot.empty()) picture_.emplace(options.plot);
        if (!options.trace.empty()) trace_.emplace(tracePath(options), *diags, options.trace[0]);
    }

    bool takeStandardOutput() const {
        return sound_.isStandardOutput() || (trace_ && trace_->file().isStandardOutput());
    }

    void afterBlock(size_t block) {
        if (trace_) trace_->sample(block);
    }

    void finish(const Recording& recording, const Processed& processed) {
        writeWav(sound_, kEngineSampleRate, 1, processed.output);
        if (picture_) drawProcess(*picture_, centreMicrophoneOf(recording), processed.output);
        if (trace_) trace_->finish();
        sound_.commit();
        if (picture_) picture_->commit();
        if (trace_) trace_->commit();
    }

  private:
    se_output::OutputFile sound_;
    std::optional<se_output::Picture> picture_;
    std::optional<DiagTrace> trace_;
};

std::vector<std::string> inputsOf(const ProcessOptions& options) {
    std::vector<std::string> inputs{options.recording.input, options.recording.far_end_file, options.tuning,
                                    options.engine.array};
    if (options.parts.empty()) return inputs;
    const std::vector<std::string> parts = scenePartPaths(options.parts);
    inputs.insert(inputs.end(), parts.begin(), parts.end());
    return inputs;
}

void requireTwoReadings(const ProcessOptions& options) {
    if (!options.compare_routines) return;
    for (const std::string& input :
         {options.recording.input, options.recording.far_end_file, options.engine.array}) {
        if (input != "-") continue;
        throw se_output::UsageError(
            "--compare-routines reads its inputs twice, which standard input does not allow; give a file");
    }
}

void run(const ProcessOptions& options) {
    superviseEngine(options.engine.supervision);
    refuseClashes(inputsOf(options), {options.output, options.plot, tracePath(options)});
    requireTwoReadings(options);
    std::optional<SecondRun> second_run;
    if (options.compare_routines) {
        second_run.emplace(options.engine, options.recording, options.bypass, options.cycles);
    }
    const Engine engine = startEngine(options.engine);
    const std::unique_ptr<DiagTree> diags = tunedDiags(options, engine);
    Outputs outputs(options, diags.get());
    const Recording recording = readRecording(options.recording);
    std::optional<SceneParts> parts;
    if (!options.parts.empty()) parts = readSceneParts(options.parts, recording);

    std::optional<boost::timer::progress_display> progress;
    if (!options.quiet && ::isatty(STDERR_FILENO) != 0) progress.emplace(recording.blocks(), std::cerr, "");
    const auto after_block = [&](size_t block) {
        outputs.afterBlock(block);
        if (progress) ++*progress;
    };
    const Processed processed = process(recording, {options.bypass, after_block, options.cycles});
    Summary summary = summarise(options, engine, recording, parts, processed);
    if (second_run) summary.engine_routines = comparisonOf(processed, second_run->finish(recording.frames));
    outputs.finish(recording, processed);
    if (options.json || !options.quiet) {
        print(summary, options.json, textStream(outputs.takeStandardOutput()));
    }
}

void addOptions(CLI::App& command, ProcessOptions& options) {
    command.add_option("IN", options.recording.input, "Recording, WAV or FLAC, 8 or more channels")
        ->required()
        ->type_name("");
    command.add_option("OUT", options.output, "Clean mono sound, a 16-bit WAV at 16 kHz")
        ->required()
        ->type_name("");
    addFarEnd(command, options.recording);
    CLI::Option* const tuning = command.add_option(
        "--tuning", options.tuning, "Apply this tuning first; 'se_host diags dump' writes one");
    tuning->type_name("FILE.json");
    addOnDifference(command, options.on_difference);
    command
        .add_option("--trace-diags", options.trace,
                    "Write the values of these diagnostics after every block: names with * and ?, and a file")
        ->type_name("PATTERN OUT.csv")
        ->expected(2);
    command
        .add_option("--plot", options.plot, "Draw levels and spectra, before and after: a PNG or SVG file")
        ->type_name("PICTURE");
    CLI::Option* const bypass =
        command.add_flag("--bypass", options.bypass, "Write the raw microphone of channel 7 instead");
    command
        .add_option("--parts", options.parts,
                    "Show how much the engine lowers echo and noise; needs the parts of a simulated "
                    "recording, which 'se_host scene --parts PREFIX' wrote")
        ->type_name("PREFIX");
    command
        .add_flag("--compare-routines", options.compare_routines,
                  "Process once more with the engine's own routines, and show their speed and how far the "
                  "output differs; not with --tuning")
        ->excludes(tuning);
    command
        .add_flag("--cycles", options.cycles,
                  "Show how the cycles of a block are divided: de-interleaving, the engine, its hooks by "
                  "kind; with --compare-routines for both runs; not with --bypass")
        ->excludes(bypass);
    addEngineChoice(command, options.engine);
    addArray(command, options.engine.array);
    addEngineSettings(command, options.engine);
    command.add_flag("--quiet", options.quiet, "No progress bar, and no summary unless --json asks for it");
    command.add_flag("--json", options.json, "The summary as JSON, with the direction of every block");
}

}  // namespace

void addProcess(CLI::App& app) {
    CLI::App* const command = app.add_subcommand("process", "Send a recording through an engine");
    const auto options = std::make_shared<ProcessOptions>();
    addOptions(*command, *options);
    command->footer(kProcessExamples);
    command->callback([options] { run(*options); });
}

}  // namespace se_host
