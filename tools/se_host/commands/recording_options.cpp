#include "tools/se_host/commands/recording_options.h"

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
}

std::string farEndText(const RecordingOptions& options) {
    if (options.far_end_channel) return "channel " + std::to_string(*options.far_end_channel);
    return options.far_end_file;
}

}  // namespace se_host
