// The engine's input: a recording of the microphones and the far end of the same time, at the
// engine's rate and in whole blocks.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tools/se_host/sound/audio_file.h"
#include "tools/se_host/sound/channel_map.h"

namespace se_host {

inline constexpr int kCentreMicrophone = 1;  // channel

struct RecordingOptions {
    std::string input;
    std::string far_end_file;            // empty: none
    std::optional<int> far_end_channel;  // of the input
    std::string channel_map;             // as channelMapOf takes it; empty: wired as the device
};

struct Recording {
    AudioData microphones;         // padded with silence to whole blocks
    std::vector<int16_t> far_end;  // as many frames; silence without a far end
    size_t frames = 0;             // before the padding
    int file_sample_rate = 0;      // Hz, of the files as they came
    bool has_far_end = false;
    std::optional<ChannelMap> channel_map;  // of the input; `microphones` are wired as the device

    size_t blocks() const;
    double seconds() const;
};

// Reads, checks, resamples and pads. fails: Failure when a file does not fit, UsageError when a channel
// does not exist or the far end is named twice.
Recording readRecording(const RecordingOptions& options);

}  // namespace se_host
