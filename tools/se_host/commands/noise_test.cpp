// `se_host noise-test`: the engine's microphone noise test on a recording or on a simulated array.
#include <algorithm>
#include <memory>
#include <optional>
#include <system_error>

#include "common/string_printf.h"
#include "host/engine/engine_stage.h"
#include "host/output/errors.h"
#include "tools/gnuplot/gnuplot.h"
#include "tools/se_host/commands/commands.h"
#include "tools/se_host/commands/engine_options.h"
#include "tools/se_host/commands/noise_test_report.h"
#include "tools/se_host/commands/output_paths.h"
#include "tools/se_host/commands/print_json.h"
#include "tools/se_host/commands/recording_options.h"
#include "tools/se_host/commands/scene_options.h"
#include "tools/se_host/engine/noise_test_run.h"
#include "tools/se_host/sound/resample.h"

namespace se_host {
namespace {

namespace se = quill::media::se_wrapper;

constexpr const char* kNoiseTestExamples =
    "Without a recording the microphones are simulated, with sensor noise and the parts of the options.\n"
    "OUT is a text: for each microphone a line 'Microphone K', then for each row a line with its number\n"
    "and value. K counts as the engine does: 0 to 5 are the microphones 3, 2, 5, 6, 7 and 4.\n"
    "The engine leaves out microphone 1, that of the centre; the table has the levels of all.\n"
    "Examples:\n"
    "  se_host noise-test noise.txt\n"
    "  se_host noise-test noise.txt --diffuse-noise -45 --plot noise.png\n"
    "  se_host noise-test noise.txt --recording silent_room.wav --json > noise.json\n";

struct NoiseTestOptions {
    se_scene::SceneOptions scene;
    EngineChoice engine;
    std::string output;
    std::string recording;
    std::string channel_map;  // of the recording
    std::string picture;
    bool quiet = false;
    bool json = false;
};

Recording simulatedRecording(const NoiseTestOptions& command) {
    se_scene::SceneOptions options = command.scene;
    if (command.engine.device_model) options.array_radius_m = kDeviceModelRadius;
    if (!command.engine.array.empty()) options.circle = circleOf(command.engine.array);
    const se_scene::Scene scene = simulate(options);
    Recording recording;
    recording.microphones = {se_scene::kSampleRate, se_scene::kChannels,
                             se_scene::interleave(scene.mixture(), scene.far_end)};
    recording.far_end = se_scene::toInt16(scene.far_end);
    recording.far_end.resize(scene.frames);
    recording.frames = scene.frames;
    recording.file_sample_rate = se_scene::kSampleRate;
    return recording;
}

std::string soundText(const NoiseTestOptions& command) {
    if (!command.recording.empty()) return command.recording;
    return "a simulated array, seed " + std::to_string(command.scene.seed);
}

// The wrapper does not report a failed write.
bool isWritten(int descriptor) {
    constexpr auto kLines = (se::NoiseTestResults::kRows + 1) * se::NoiseTestResults::kMicrophones;
    try {
        const std::string written = se_output::contentOf(descriptor);
        return std::count(written.begin(), written.end(), '\n') == kLines;
    } catch (const std::system_error&) {
        return false;
    }
}

void save(const se_output::OutputFile& file) {
    callEngine(EngineStage::kNoiseResults,
               [&] { se::saveNoiseTestResults(se_output::pathOf(file.descriptor())); });
    if (isWritten(file.descriptor())) return;
    throw se_output::Failure("cannot write '" + file.path() +
                             "': the results did not fit; is there space left?");
}

void run(const NoiseTestOptions& command) {
    superviseEngine(command.engine.supervision);
    refuseClashes({command.recording, command.engine.array}, {command.output, command.picture});
    // Steps that can fail come before steps that take long.
    se_output::OutputFile output(command.output);
    std::optional<se_output::Picture> picture;
    if (!command.picture.empty()) picture.emplace(command.picture);
    const Engine engine = startEngine(command.engine);
    const Recording recording =
        command.recording.empty() ? simulatedRecording(command)
                                  : readRecording({command.recording, {}, std::nullopt, command.channel_map});

    NoiseTestReport report{command.output,
                           command.picture,
                           soundText(command),
                           engine.build,
                           engine.version,
                           0,
                           {},
                           checkMicrophones(recording)};
    report.blocks = runNoiseTest(recording);
    report.results = noiseTestResults();
    save(output);
    if (picture) picture->draw(toScript(report), {1100, 760});
    output.commit();
    if (picture) picture->commit();
    if (command.json || !command.quiet) {
        print(report, command.json, textStream(output.isStandardOutput()));
    }
}

// Options of the simulation have no meaning for a recording.
void excludeSceneOptions(CLI::App& command, CLI::Option* recording) {
    for (CLI::Option* const option : command.get_options()) {
        if (option != recording && option != command.get_help_ptr()) recording->excludes(option);
    }
}

}  // namespace

void addNoiseTest(CLI::App& app) {
    CLI::App* const command = app.add_subcommand("noise-test", "Run the engine's microphone noise test");
    const auto options = std::make_shared<NoiseTestOptions>();
    options->scene.talker_level_dbfs = se_scene::kSilent;
    addSceneOptions(*command, options->scene);
    auto* const recording =
        command->add_option("--recording", options->recording,
                            "Test with this WAV or FLAC of 8 or more channels, not with a simulated array");
    recording->type_name("IN");
    excludeSceneOptions(*command, recording);
    addChannelMap(*command, options->channel_map);
    command->get_option("--channel-map")->needs(recording);
    command->add_option("OUT", options->output, "The results, a text")->required()->type_name("");
    command->add_option("--plot", options->picture, "Also draw the results, a picture in .png or .svg")
        ->type_name("FILE");
    addEngineChoice(*command, options->engine);
    addArray(*command, options->engine.array);
    command->add_flag("--quiet", options->quiet, "No table, unless --json asks for it");
    command->add_flag("--json", options->json, "The results as JSON");
    command->footer(kNoiseTestExamples);
    command->callback([options] { run(*options); });
}

}  // namespace se_host
