// `se_host highpass`: a sound through the wrapper's 600 Hz high-pass.
#include <cmath>
#include <memory>
#include <optional>

#include "common/string_printf.h"
#include "host/output/errors.h"
#include "tools/gnuplot/gnuplot.h"
#include "tools/se_host/commands/commands.h"
#include "tools/se_host/commands/output_paths.h"
#include "tools/se_host/commands/print_json.h"
#include "tools/se_host/sound/audio_file.h"
#include "tools/se_host/sound/levels.h"
#include "tools/se_host/sound/resample.h"
#include "tools/se_host/sound/spectrum_plot.h"
#include "webrtc_common/se_wrapper.h"

namespace se_host {
namespace {

namespace se = quill::media::se_wrapper;
using quill::stringPrintf;

constexpr int kPictureSize = 1024;  // samples a piece of the spectra
constexpr int kDelay = 28;          // samples by which the filter delays

constexpr const char* kHighpassExamples =
    "The output has the length of the input, and the filter's delay is removed.\n"
    "Examples:\n"
    "  se_host highpass talker.wav bright.wav\n"
    "  se_host highpass talker.wav half.wav --gain 0.5 --plot half.png\n";

struct HighpassOptions {
    std::string input;
    std::string output;
    std::string picture;
    float gain = 1;
    int channel = 0;  // of the levels and the picture
    bool quiet = false;
};

// One channel, without the filter's delay. The filter delays its samples, so silence after the channel brings
// out the last of them; silence before it brings the filter to its gain.
std::vector<int16_t> filtered(std::vector<int16_t> samples, float gain) {
    se::Filter filter(se::kHighPass600Hz);
    int16_t silence[se::BLOCK_SIZE] = {};
    filter.filterBlock(silence, silence, gain);

    const size_t length = samples.size();
    samples.resize((length + kDelay + se::BLOCK_SIZE - 1) / se::BLOCK_SIZE * se::BLOCK_SIZE);
    for (size_t first = 0; first < samples.size(); first += se::BLOCK_SIZE) {
        filter.filterBlock(samples.data() + first, samples.data() + first, gain);
    }
    samples.erase(samples.begin(), samples.begin() + kDelay);
    samples.resize(length);
    return samples;
}

AudioData filtered(const AudioData& sound, float gain) {
    AudioData result = sound;
    const auto channels = static_cast<size_t>(sound.channels);
    for (size_t channel = 0; channel < channels; ++channel) {
        const std::vector<int16_t> samples = filtered(channelOf(sound, static_cast<int>(channel)), gain);
        for (size_t i = 0; i < samples.size(); ++i) result.samples[i * channels + channel] = samples[i];
    }
    return result;
}

void draw(se_output::Picture& picture, const HighpassOptions& options, const AudioData& in,
          const AudioData& out) {
    const auto spectrum = [&](const AudioData& sound) {
        return averageSpectrum(channelOf(sound, options.channel), kEngineSampleRate, kPictureSize);
    };
    picture.draw(
        spectrumScript(stringPrintf("600 Hz high-pass at gain %g, channel %d", options.gain, options.channel),
                       {{se_output::fileName(options.input), spectrum(in)},
                        {se_output::fileName(options.output), spectrum(out)}}));
}

void requireEnoughForPicture(const HighpassOptions& options, const AudioData& sound) {
    if (options.picture.empty() || sound.frames() >= static_cast<size_t>(kPictureSize)) return;
    throw se_output::UsageError("'" + options.input + "' is too short for --plot, which needs " +
                                std::to_string(kPictureSize) + " samples a channel; give a longer sound");
}

std::string channelLevelText(const AudioData& sound, int channel) {
    const double dbfs = levelOf(channelOf(sound, channel)).rms_dbfs;
    return std::isinf(dbfs) ? std::string("silence") : stringPrintf("%.1f dBFS", dbfs);
}

std::string soundText(const AudioData& file, const AudioData& sound) {
    std::string text =
        stringPrintf("%.2f s, %d channel%s", sound.seconds(), sound.channels, sound.channels == 1 ? "" : "s");
    if (file.sample_rate == kEngineSampleRate) return text;
    return text + stringPrintf(", resampled from %d to %d Hz", file.sample_rate, kEngineSampleRate);
}

void run(const HighpassOptions& options) {
    refuseClashes({options.input}, {options.output, options.picture});
    se_output::OutputFile output(options.output);
    std::optional<se_output::Picture> picture;
    if (!options.picture.empty()) picture.emplace(options.picture);

    const AudioData file = readAudioFile(options.input);
    requireChannel("--channel " + std::to_string(options.channel), file, options.input, options.channel);
    const AudioData sound = resample(file, kEngineSampleRate);
    requireEnoughForPicture(options, sound);
    const AudioData result = filtered(sound, options.gain);
    writeWav(output, kEngineSampleRate, result.channels, result.samples);
    if (picture) draw(*picture, options, sound, result);
    output.commit();
    if (picture) picture->commit();
    if (options.quiet) return;
    textStream(output.isStandardOutput())
        << options.input << " -> " << options.output << "\n"
        << "  sound     " << soundText(file, sound) << "\n"
        << stringPrintf("  filter    600 Hz high-pass, gain %g\n", options.gain) << "  level     "
        << channelLevelText(sound, options.channel) << " in channel " << options.channel << ", "
        << channelLevelText(result, options.channel) << " after the filter\n";
}

std::string refuseOtherGains(const std::string& text) {
    double gain = 0;
    const bool fits = CLI::detail::lexical_cast(text, gain) && gain >= 0 && gain <= 1;
    return fits ? std::string() : "a number from 0 to 1 is needed, not " + text;
}

}  // namespace

void addHighpass(CLI::App& app) {
    CLI::App* const command = app.add_subcommand("highpass", "Send a sound through the 600 Hz high-pass");
    const auto options = std::make_shared<HighpassOptions>();
    command->add_option("IN", options->input, "Sound, WAV or FLAC, any number of channels")
        ->required()
        ->type_name("");
    command->add_option("OUT", options->output, "The filtered sound, a 16-bit WAV at 16 kHz")
        ->required()
        ->type_name("");
    command
        ->add_option("--gain", options->gain, "Share of the filtered sound: 1 filtered, 0 the sound as it is")
        ->type_name("G")
        ->check(CLI::Validator(refuseOtherGains, ""))
        ->capture_default_str();
    command->add_option("--channel", options->channel, "Channel whose levels and spectra are shown")
        ->type_name("N")
        ->check(CLI::NonNegativeNumber.description(""))
        ->capture_default_str();
    command->add_option("--plot", options->picture, "Also draw both spectra, a picture in .png or .svg")
        ->type_name("FILE");
    command->add_flag("--quiet", options->quiet, "No summary");
    command->footer(kHighpassExamples);
    command->callback([options] { run(*options); });
}

}  // namespace se_host
