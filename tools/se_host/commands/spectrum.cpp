// `se_host spectrum`: the mean spectrum of a sound.
#include <cmath>
#include <iostream>
#include <memory>
#include <optional>

#include "common/string_printf.h"
#include "host/output/errors.h"
#include "tools/gnuplot/gnuplot.h"
#include "tools/se_host/commands/commands.h"
#include "tools/se_host/commands/output_paths.h"
#include "tools/se_host/commands/print_json.h"
#include "tools/se_host/commands/text_lines.h"
#include "tools/se_host/sound/audio_file.h"
#include "tools/se_host/sound/spectrum_plot.h"

namespace se_host {
namespace {

using quill::stringPrintf;
using Json = nlohmann::ordered_json;

constexpr size_t kPeaks = 5;
constexpr int kSmallestSize = 16;
constexpr int kLargestSize = 32768;

constexpr const char* kSpectrumExamples =
    "A full-scale sine has 0 dBFS. The spectrum is the mean over the whole sound.\n"
    "Examples:\n"
    "  se_host spectrum talker.wav\n"
    "  se_host spectrum meeting.wav --channel 1 --plot centre.png\n"
    "  se_host spectrum talker.wav --size 4096 --json > spectrum.json\n";

struct SpectrumOptions {
    std::string input;
    std::string picture;
    int channel = 0;
    int size = 1024;
    bool json = false;
};

std::vector<int16_t> samplesOf(const AudioData& sound, const SpectrumOptions& options) {
    requireChannel("--channel " + std::to_string(options.channel), sound, options.input, options.channel);
    if (sound.frames() < static_cast<size_t>(options.size)) {
        throw se_output::UsageError("'" + options.input + "' has " + std::to_string(sound.frames()) +
                                    " samples a channel, fewer than the pieces of " +
                                    std::to_string(options.size) +
                                    "; give a longer sound or a smaller --size");
    }
    return channelOf(sound, options.channel);
}

std::string titleOf(const std::string& name, const SpectrumOptions& options) {
    return name + ", channel " + std::to_string(options.channel);
}

std::string toText(const SpectrumOptions& options, const AudioData& sound, const Spectrum& spectrum) {
    std::string text = titleOf(options.input, options) + "\n";
    text += stringPrintf("  sound     %.2f s at %d Hz\n", sound.seconds(), sound.sample_rate);
    text += stringPrintf("  spectrum  %zu bins of %.4g Hz, mean of %zu pieces of %d samples\n",
                         spectrum.dbfs.size(), spectrum.hertz_per_bin, spectrum.pieces, options.size);
    text += "  constant  " + levelText(spectrum.dbfs[0]) + "\n";
    const char* label = "  peaks     ";
    for (const size_t bin : peaksOf(spectrum, kPeaks)) {
        text += label + stringPrintf("%.1f dBFS at %.0f Hz\n", spectrum.dbfs[bin], spectrum.hertz(bin));
        label = "            ";
    }
    return text;
}

Json toJson(const SpectrumOptions& options, const AudioData& sound, const Spectrum& spectrum) {
    Json levels = Json::array();
    for (const double dbfs : spectrum.dbfs) levels.push_back(std::isinf(dbfs) ? Json(nullptr) : Json(dbfs));
    return {{"input", options.input},
            {"channel", options.channel},
            {"sample_rate", sound.sample_rate},
            {"seconds", sound.seconds()},
            {"size", options.size},
            {"pieces", spectrum.pieces},
            {"hertz_per_bin", spectrum.hertz_per_bin},
            {"dbfs", levels}};
}

void run(const SpectrumOptions& options) {
    refuseClashes({options.input}, {options.picture});
    std::optional<se_output::Picture> picture;
    if (!options.picture.empty()) picture.emplace(options.picture);

    const AudioData sound = readAudioFile(options.input);
    const Spectrum spectrum = averageSpectrum(samplesOf(sound, options), sound.sample_rate, options.size);
    if (picture) {
        picture->draw(spectrumScript("Spectrum of " + titleOf(se_output::fileName(options.input), options),
                                     {{"mean level", spectrum}}));
        picture->commit();
    }
    if (options.json) {
        printJson(toJson(options, sound, spectrum));
    } else {
        std::cout << toText(options, sound, spectrum);
    }
}

// The time of a Fourier transform grows with the largest prime factor of its size.
bool hasSmallFactors(int number) {
    for (const int factor : {2, 3, 5, 7}) {
        while (number % factor == 0) number /= factor;
    }
    return number == 1;
}

std::string refuseOtherSizes(const std::string& text) {
    int size = 0;
    const bool fits = CLI::detail::lexical_cast(text, size) && size >= kSmallestSize &&
                      size <= kLargestSize && size % 2 == 0 && hasSmallFactors(size);
    return fits ? std::string()
                : stringPrintf("an even number from %d to %d without prime factors above 7 is needed, not ",
                               kSmallestSize, kLargestSize) +
                      text;
}

}  // namespace

void addSpectrum(CLI::App& app) {
    CLI::App* const command = app.add_subcommand("spectrum", "Show the mean spectrum of a sound");
    const auto options = std::make_shared<SpectrumOptions>();
    command->add_option("IN", options->input, "Sound, WAV or FLAC")->required()->type_name("");
    command->add_option("--channel", options->channel, "Channel of IN, counted from 0")
        ->type_name("N")
        ->check(CLI::NonNegativeNumber.description(""))
        ->capture_default_str();
    command->add_option("--size", options->size, "Samples a piece: more of them resolve closer tones")
        ->type_name("N")
        ->check(CLI::Validator(refuseOtherSizes, ""))
        ->capture_default_str();
    command->add_option("--plot", options->picture, "Also draw it, a picture in .png or .svg")
        ->type_name("FILE");
    command->add_flag("--json", options->json, "Every bin, as JSON");
    command->footer(kSpectrumExamples);
    command->callback([options] { run(*options); });
}

}  // namespace se_host
