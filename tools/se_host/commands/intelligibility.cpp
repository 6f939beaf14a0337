// `se_host intelligibility`: how much of clean speech is left in a recording of it.
#include <algorithm>
#include <iostream>
#include <memory>
#include <optional>

#include "common/string_printf.h"
#include "host/health/echo_lag.h"
#include "host/output/errors.h"
#include "tools/se_host/commands/commands.h"
#include "tools/se_host/commands/print_json.h"
#include "tools/se_host/measures/talker_likeness.h"
#include "tools/se_host/sound/audio_file.h"
#include "tools/se_host/sound/resample.h"

namespace se_host {
namespace {

using quill::stringPrintf;
using Json = nlohmann::ordered_json;

constexpr const char* kCleanChannel = "--clean-channel";
constexpr const char* kChannel = "--channel";

constexpr const char* kIntelligibilityExamples =
    "Both sounds begin at the same moment; HEARD may lag by up to a second, which is found and\n"
    "removed. The shorter one's length counts, at least two seconds; pauses of CLEAN do not.\n"
    "The short-time objective intelligibility is 1 for the same speech, about 0 where nothing of\n"
    "it is left.\n"
    "Examples:\n"
    "  se_host intelligibility talker.wav out.wav\n"
    "  se_host intelligibility room-talker.wav room.wav --clean-channel 1 --channel 1 --json\n";

struct IntelligibilityOptions {
    std::string clean;
    std::string heard;
    int clean_channel = 0;
    int channel = 0;
    bool json = false;
};

struct Likeness {
    double seconds;
    int lag_ms;
    double intelligibility;
    double si_sdr_db;
};

std::vector<int16_t> samplesOf(const std::string& path, const char* option, int channel) {
    const AudioData sound = readAudioFile(path);
    requireChannel(option + (" " + std::to_string(channel)), sound, path, channel);
    return channelOf(resample(sound, kEngineSampleRate), channel);
}

Likeness likenessOf(const IntelligibilityOptions& options) {
    std::vector<int16_t> clean = samplesOf(options.clean, kCleanChannel, options.clean_channel);
    std::vector<int16_t> heard = samplesOf(options.heard, kChannel, options.channel);
    const size_t length = std::min(clean.size(), heard.size());
    clean.resize(length);
    heard.resize(length);
    const std::optional<TalkerLikeness> likeness = TalkerLikeness::find(clean, heard);
    if (!likeness) {
        throw se_output::Failure(
            "nothing of '" + options.clean + "' is found in '" + options.heard +
            "'; give two sounds of the same speech that begin at the same moment and last "
            "two seconds or more");
    }
    const Span all{0, length / kBlock};
    const std::optional<double> intelligibility = likeness->intelligibility(all);
    const std::optional<double> si_sdr_db = likeness->siSdrDb(all);
    if (!intelligibility || !si_sdr_db) {
        throw se_output::Failure("'" + options.clean +
                                 "' has less than 0.4 s of speech beside the other sound; give longer ones");
    }
    return {static_cast<double>(length) / kEngineSampleRate, likeness->lagMs(), *intelligibility, *si_sdr_db};
}

std::string toText(const IntelligibilityOptions& options, const Likeness& likeness) {
    return options.clean + " in " + options.heard + "\n" +
           stringPrintf("  sound            %.2f s, %d ms later\n", likeness.seconds, likeness.lag_ms) +
           stringPrintf("  intelligibility  %.3f (short-time objective)\n", likeness.intelligibility) +
           stringPrintf("  SI-SDR           %.1f dB\n", likeness.si_sdr_db);
}

Json toJson(const IntelligibilityOptions& options, const Likeness& likeness) {
    return {{"clean", options.clean},           {"clean_channel", options.clean_channel},
            {"heard", options.heard},           {"channel", options.channel},
            {"seconds", likeness.seconds},      {"lag_ms", likeness.lag_ms},
            {"stoi", likeness.intelligibility}, {"si_sdr_db", likeness.si_sdr_db}};
}

void run(const IntelligibilityOptions& options) {
    const Likeness likeness = likenessOf(options);
    if (options.json) {
        printJson(toJson(options, likeness));
    } else {
        std::cout << toText(options, likeness);
    }
}

}  // namespace

void addIntelligibility(CLI::App& app) {
    CLI::App* const command =
        app.add_subcommand("intelligibility", "Tell how much of clean speech is left in a sound");
    const auto options = std::make_shared<IntelligibilityOptions>();
    command->add_option("CLEAN", options->clean, "The speech itself, WAV or FLAC")->required()->type_name("");
    command->add_option("HEARD", options->heard, "What became of it: recorded, processed, sent")
        ->required()
        ->type_name("");
    command->add_option(kCleanChannel, options->clean_channel, "Channel of CLEAN, counted from 0")
        ->type_name("N")
        ->check(CLI::NonNegativeNumber.description(""))
        ->capture_default_str();
    command->add_option(kChannel, options->channel, "Channel of HEARD, counted from 0")
        ->type_name("N")
        ->check(CLI::NonNegativeNumber.description(""))
        ->capture_default_str();
    command->add_flag("--json", options->json, "The figures as JSON");
    command->footer(kIntelligibilityExamples);
    command->callback([options] { run(*options); });
}

}  // namespace se_host
