#include "tools/se_host/process_command.h"

#include <unistd.h>

#include <iostream>
#include <memory>

#include "tools/se_host/engine_options.h"
#include "tools/se_host/output_paths.h"
#include "tools/se_host/print_json.h"
#include "tools/se_host/resample.h"
#include "tools/se_host/summary.h"
#include "webrtc_common/se_wrapper.h"

namespace se_host {
namespace {

namespace se = quill::media::se_wrapper;

constexpr const char* kExamples =
    "Examples:\n"
    "  se_host process meeting.wav talker.wav\n"
    "  se_host process meeting.wav talker.wav --far-end-channel 0\n"
    "  se_host process meeting.flac talker.wav --far-end loudspeaker.wav --json > run.json\n"
    "  se_host process meeting.wav talker.wav --engine se_lib_harborv006\n";

struct ProcessOptions {
    RecordingOptions recording;
    EngineOptions engine;
    std::string output;
    bool bypass = false;
    bool quiet = false;
    bool json = false;
};

std::string farEndText(const RecordingOptions& options) {
    if (options.far_end_channel) return "channel " + std::to_string(*options.far_end_channel);
    return options.far_end_file;
}

std::vector<Level> levelsOf(const Recording& recording) {
    std::vector<Level> levels;
    for (int channel = 0; channel < recording.microphones.channels; ++channel) {
        std::vector<int16_t> samples = channelOf(recording.microphones, channel);
        samples.resize(recording.frames);
        levels.push_back(levelOf(samples));
    }
    return levels;
}

Summary summarise(const ProcessOptions& options, const Session& session, const Recording& recording,
                  const Processed& processed) {
    Summary summary;
    summary.input = options.recording.input;
    summary.output = options.output;
    summary.far_end = farEndText(options.recording);
    summary.bypass = options.bypass;
    summary.build = session.build;
    summary.version = session.version;
    summary.has_beam_forming = se::g_has_beam_forming;
    summary.has_noise_tests = se::g_has_noise_tests;
    summary.blocks = recording.blocks();
    summary.seconds = recording.seconds();
    summary.channels = recording.microphones.channels;
    summary.file_sample_rate = recording.file_sample_rate;
    summary.processing_seconds = processed.processing_seconds;
    summary.input_levels = levelsOf(recording);
    summary.output_level = levelOf(processed.output);
    summary.directions = processed.directions;
    summary.talker = findTalker(processed.directions);
    return summary;
}

void print(const Summary& summary, const ProcessOptions& options) {
    if (options.json) {
        printJson(toJson(summary));
    } else if (!options.quiet) {
        std::cout << toText(summary);
    }
}

void run(const ProcessOptions& options) {
    refuseClashes({options.recording.input, options.recording.far_end_file}, {options.output});
    // What fails soon comes before what takes long.
    TemporaryFile output(options.output);
    const Session session = startSession(options.engine);
    const Recording recording = readRecording(options.recording);

    const bool show_progress = !options.quiet && ::isatty(STDERR_FILENO) != 0;
    const Processed processed = process(recording, options.bypass, show_progress);
    writeWav(output, kEngineSampleRate, 1, processed.output);
    output.commit();
    print(summarise(options, session, recording, processed), options);
}

void addOptions(CLI::App& command, ProcessOptions& options) {
    command.add_option("IN", options.recording.input, "Recording, WAV or FLAC, 8 or more channels")
        ->required()
        ->type_name("");
    command.add_option("OUT", options.output, "Clean mono sound, a 16-bit WAV at 16 kHz")
        ->required()
        ->type_name("");
    auto* const file =
        command.add_option("--far-end", options.recording.far_end_file,
                           "What the loudspeaker played: a mono file at the rate of IN, no shorter");
    file->type_name("FAR");
    auto* const channel = command.add_option("--far-end-channel", options.recording.far_end_channel,
                                             "What the loudspeaker played: a channel of IN, counted from 0");
    channel->type_name("N")->excludes(file);
    command.add_flag("--bypass", options.bypass, "Write the raw microphone of channel 7 instead");
    addEngineChoice(command, options.engine);
    addEngineSettings(command, options.engine);
    command.add_flag("--quiet", options.quiet, "No progress bar, and no summary unless --json asks for it");
    command.add_flag("--json", options.json, "The summary as JSON, with the direction of every block");
}

}  // namespace

void addProcessCommand(CLI::App& app) {
    CLI::App* const command = app.add_subcommand("process", "Send a recording through an engine");
    const auto options = std::make_shared<ProcessOptions>();
    addOptions(*command, *options);
    command->footer(kExamples);
    command->callback([options] { run(*options); });
}

}  // namespace se_host
