// Which channel of a recording is which microphone, for recordings that are not wired as the device is. Channels are
// counted from 0; microphone N is the one that the device has in channel N.
#pragma once

#include <array>
#include <optional>
#include <string>

#include "tools/se_host/sound/audio_file.h"

namespace se_host {

inline constexpr int kArrayMicrophones = 7;  // in the device's channels 1 to 7

struct ChannelMap {
    std::array<int, kArrayMicrophones> microphones{1, 2, 3, 4, 5, 6, 7};
    std::optional<int> far_end;
};

// Of a text as "1,2,3,4,5,6,7,0": the channels of the microphones 1 to 7, and that of the far end unless it is left out.
// fails: UsageError.
ChannelMap channelMapOf(const std::string& text);

// The recording as the device delivers it: 8 channels, channel 0 silent. `path` is for messages.
// fails: UsageError when a channel of the map does not exist.
AudioData wiredAsDevice(const AudioData& input, const ChannelMap& map, const std::string& path);

}  // namespace se_host
