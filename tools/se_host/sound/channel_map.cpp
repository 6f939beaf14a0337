#include "tools/se_host/sound/channel_map.h"

#include <algorithm>
#include <charconv>
#include <set>
#include <vector>

#include "host/output/errors.h"

namespace se_host {
namespace {

constexpr size_t kDeviceChannels = kArrayMicrophones + 1;

// Nothing: the text is no list of numbers with commas.
std::optional<std::vector<int>> numbersIn(const std::string& text) {
    std::vector<int> numbers;
    const char* const end = text.data() + text.size();
    for (const char* at = text.data();; ++at) {
        int number = -1;
        const auto [rest, error] = std::from_chars(at, end, number);
        if (error != std::errc() || number < 0) return std::nullopt;
        numbers.push_back(number);
        if (rest == end) return numbers;
        if (*rest != ',') return std::nullopt;
        at = rest;
    }
}

void requireEachOnce(const std::vector<int>& channels) {
    std::set<int> seen;
    for (const int channel : channels) {
        if (seen.insert(channel).second) continue;
        throw se_output::UsageError("channel " + std::to_string(channel) +
                                    " is named twice; give each microphone and the far end its own");
    }
}

}  // namespace

ChannelMap channelMapOf(const std::string& text) {
    const std::optional<std::vector<int>> numbers = numbersIn(text);
    if (!numbers || numbers->size() < kArrayMicrophones || numbers->size() > kDeviceChannels) {
        throw se_output::UsageError("'" + text +
                                    "' is not a list as 1,2,3,4,5,6,7,0: the channels of the microphones 1 "
                                    "to 7, and that of the far end unless "
                                    "there is none");
    }
    requireEachOnce(*numbers);
    ChannelMap map;
    std::copy_n(numbers->begin(), map.microphones.size(), map.microphones.begin());
    if (numbers->size() == kDeviceChannels) map.far_end = numbers->back();
    return map;
}

AudioData wiredAsDevice(const AudioData& input, const ChannelMap& map, const std::string& path) {
    const auto channels = static_cast<size_t>(input.channels);
    AudioData wired{input.sample_rate, static_cast<int>(kDeviceChannels), {}};
    wired.samples.resize(input.frames() * kDeviceChannels);
    for (size_t microphone = 0; microphone < map.microphones.size(); ++microphone) {
        const int channel = map.microphones[microphone];
        requireChannel("--channel-map: channel " + std::to_string(channel), input, path, channel);
        for (size_t frame = 0; frame < input.frames(); ++frame) {
            wired.samples[frame * kDeviceChannels + microphone + 1] =
                input.samples[frame * channels + static_cast<size_t>(channel)];
        }
    }
    return wired;
}

}  // namespace se_host
