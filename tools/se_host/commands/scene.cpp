// `se_host scene`: a simulated recording, for trying the engine without a microphone array.
#include <algorithm>
#include <iostream>
#include <list>
#include <memory>

#include "common/string_printf.h"
#include "tools/scene/measure.h"
#include "tools/se_host/commands/commands.h"
#include "tools/se_host/commands/engine_options.h"
#include "tools/se_host/commands/output_paths.h"
#include "tools/se_host/commands/print_json.h"
#include "tools/se_host/commands/scene_options.h"
#include "tools/se_host/commands/text_lines.h"
#include "tools/se_host/sound/audio_file.h"
#include "tools/se_host/sound/resample.h"

namespace se_host {
namespace {

using quill::stringPrintf;
using se_scene::Scene;

constexpr const char* kSceneExamples =
    "The recording has 8 channels at 16 kHz: channel 0 is the far end of the loudspeaker, channels\n"
    "1 to 7 are the microphones, channel 1 the centre one. The same options give the same recording.\n"
    "Examples:\n"
    "  se_host scene meeting.wav --azimuth 60\n"
    "  se_host scene noisy.wav --azimuth 130 --diffuse-noise -45 --reverberation 0.3\n"
    "  se_host scene call.wav --echo -30 --far-end-out loudspeaker.wav --parts call\n"
    "  se_host process call.wav talker.wav --far-end loudspeaker.wav\n";

struct SceneCommandOptions {
    se_scene::SceneOptions scene;
    std::string output;
    std::string speech;
    std::string second_speech;
    std::string far_end_speech;
    std::string far_end_output;
    std::string parts;
    std::string array;  // file with the places of the microphones; empty: the device's
    bool device_model = false;
    bool quiet = false;
};

// A file to be written: its channels, and how they are made from the scene.
struct Output {
    std::string path;
    int channels;
    std::vector<int16_t> (*samples)(const Scene& scene);
};

std::vector<Output> outputsOf(const SceneCommandOptions& command) {
    std::vector<Output> outputs{{command.output, se_scene::kChannels, [](const Scene& scene) {
                                     return se_scene::interleave(scene.mixture(), scene.far_end);
                                 }}};
    if (!command.far_end_output.empty()) {
        outputs.push_back(
            {command.far_end_output, 1, [](const Scene& scene) { return se_scene::toInt16(scene.far_end); }});
    }
    if (command.parts.empty()) return outputs;
    // The far end is part of the echo file, so that the parts add up to the recording in every channel.
    outputs.push_back({command.parts + "-talker.wav", se_scene::kChannels,
                       [](const Scene& scene) { return se_scene::interleave(scene.talker, {}); }});
    outputs.push_back({command.parts + "-noise.wav", se_scene::kChannels,
                       [](const Scene& scene) { return se_scene::interleave(scene.noise, {}); }});
    outputs.push_back({command.parts + "-echo.wav", se_scene::kChannels,
                       [](const Scene& scene) { return se_scene::interleave(scene.echo, scene.far_end); }});
    return outputs;
}

std::vector<std::string> pathsOf(const std::vector<Output>& outputs) {
    std::vector<std::string> paths;
    for (const Output& output : outputs) paths.push_back(output.path);
    return paths;
}

// The first channel at the scene's rate and scale; no path, no samples.
std::vector<float> readSpeech(const std::string& path) {
    if (path.empty()) return {};
    const AudioData file = readAudioFile(path);
    const AudioData speech = resample({file.sample_rate, 1, channelOf(file, 0)}, se_scene::kSampleRate);
    std::vector<float> samples;
    for (const int16_t sample : speech.samples) samples.push_back(static_cast<float>(sample) / 32768);
    return samples;
}

Scene simulate(const SceneCommandOptions& command) {
    se_scene::SceneOptions options = command.scene;
    if (command.device_model) options.array_radius_m = kDeviceModelRadius;
    if (!command.array.empty()) options.circle = circleOf(command.array);
    options.speech = readSpeech(command.speech);
    options.second_talker_speech = readSpeech(command.second_speech);
    options.far_end_speech = readSpeech(command.far_end_speech);
    return se_host::simulate(options);
}

std::string levelOrNone(double dbfs) {
    return dbfs == se_scene::kSilent ? std::string("none") : stringPrintf("%.1f dBFS", dbfs);
}

std::string talkerText(const se_scene::SceneOptions& options, const Scene& scene) {
    const double level = se_scene::activeLevelDbfs(scene.talker[0]);
    if (level == se_scene::kSilent) return levelOrNone(level);
    std::string azimuths = stringPrintf("%g", options.talker_azimuth_deg);
    if (options.walk_deg != 0)
        azimuths += stringPrintf(" to %g", options.talker_azimuth_deg + options.walk_deg);
    if (options.second_talker_azimuth_deg)
        azimuths += stringPrintf(" and %g", *options.second_talker_azimuth_deg);
    return levelOrNone(level) + " while speaking, at " + azimuths +
           stringPrintf(" degrees, %g m", options.talker_distance_m);
}

std::string summaryOf(const SceneCommandOptions& command, const std::vector<Output>& outputs,
                      const Scene& scene) {
    std::string text = "wrote";
    for (const Output& output : outputs) text += " " + output.path;
    text += "\n";
    text += labelledLine("sound", stringPrintf("%.2f s, seed %u", command.scene.seconds, command.scene.seed));
    text += labelledLine("talker", talkerText(command.scene, scene));
    text += labelledLine("noise", levelOrNone(se_scene::levelDbfs(scene.noise[0])));
    return text + labelledLine("echo", levelOrNone(se_scene::activeLevelDbfs(scene.echo[0])));
}

void run(const SceneCommandOptions& command) {
    const std::vector<Output> outputs = outputsOf(command);
    refuseClashes({command.speech, command.second_speech, command.far_end_speech, command.array},
                  pathsOf(outputs));
    std::list<se_output::OutputFile> files;  // before the work: reports an unwritable path early
    for (const Output& output : outputs) files.emplace_back(output.path);

    const Scene scene = simulate(command);
    auto file = files.begin();
    for (const Output& output : outputs) {
        writeWav(*file++, se_scene::kSampleRate, output.channels, output.samples(scene));
    }
    for (se_output::OutputFile& finished : files) finished.commit();
    if (command.quiet) return;
    const bool taken =
        std::any_of(files.begin(), files.end(), [](const auto& one) { return one.isStandardOutput(); });
    textStream(taken) << summaryOf(command, outputs, scene);
}

void addFiles(CLI::App& command, SceneCommandOptions& options) {
    command.add_option("OUT", options.output, "The recording, a 16-bit WAV")->required();
    command
        .add_option("--parts", options.parts,
                    "Also write PREFIX-talker.wav, PREFIX-noise.wav, PREFIX-echo.wav")
        ->type_name("PREFIX");
    CLI::Option* const device_model =
        command.add_flag("--device-model", options.device_model,
                         "The microphones of the device model that has an engine build of its own");
    addArray(command, options.array);
    command.get_option("--array")->excludes(device_model);
    command.add_flag("--quiet", options.quiet, "No summary");
    command
        .add_option("--speech", options.speech,
                    "The talker's speech: a sound file's first channel (default: a synthetic voice)")
        ->type_name("FILE")
        ->group("Talker");
    command
        .add_option("--second-speech", options.second_speech,
                    "The second talker's speech, likewise; needs --second-azimuth")
        ->type_name("FILE")
        ->needs("--second-azimuth")
        ->group("Talker");
    command
        .add_option("--far-end-speech", options.far_end_speech,
                    "The far end's speech, likewise; needs --echo")
        ->type_name("FILE")
        ->needs("--echo")
        ->group("Loudspeaker");
    command.add_option("--far-end-out", options.far_end_output, "Also write the far end, mono; needs --echo")
        ->type_name("FAR")
        ->needs("--echo")
        ->group("Loudspeaker");
}

}  // namespace

void addScene(CLI::App& app) {
    CLI::App* const command =
        app.add_subcommand("scene", "Write a simulated recording, to try an engine with");
    const auto options = std::make_shared<SceneCommandOptions>();
    addSceneOptions(*command, options->scene);
    addFiles(*command, *options);
    command->footer(kSceneExamples);
    command->callback([options] { run(*options); });
}

}  // namespace se_host
