#include "tools/se_host/commands/recording_options.h"

#include "host/output/errors.h"

namespace se_host {

void addFarEnd(CLI::App& command, RecordingOptions& options) {
    auto* const file =
        command.add_option("--far-end", options.far_end_file,
                           "The far end, which the loudspeaker played: a mono file at the rate of the "
                           "recording, no shorter");
    file->type_name("FAR");
    command
        .add_option("--far-end-channel", options.far_end_channel,
                    "The far end, which the loudspeaker played: a channel of the recording, from 0; not with "
                    "--far-end")
        ->type_name("N")
        ->excludes(file);
    addChannelMap(command, options.channel_map);
}

void addChannelMap(CLI::App& command, std::string& map) {
    const auto refusalOf = [](const std::string& text) -> std::string {
        try {
            channelMapOf(text);
            return {};
        } catch (const se_output::UsageError& refusal) {
            return refusal.what();
        }
    };
    command
        .add_option(
            "--channel-map", map,
            "The recording's channels of the microphones 1 to 7 and, unless there is none, of the far end "
            "(default: microphone N in channel N)")
        ->type_name("1,...,7,0")
        ->check(CLI::Validator(refusalOf, ""));
}

std::string farEndText(const RecordingOptions& options) {
    if (!options.channel_map.empty()) {
        const ChannelMap map = channelMapOf(options.channel_map);
        if (map.far_end) return "channel " + std::to_string(*map.far_end);
    }
    if (options.far_end_channel) return "channel " + std::to_string(*options.far_end_channel);
    return options.far_end_file;
}

}  // namespace se_host
