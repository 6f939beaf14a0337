#include "pipewire/arguments.h"

#include <spa/utils/json.h>
#include <spa/utils/string.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

namespace se_pipewire {
namespace {

constexpr const char* kPrefix = "se.";

[[noreturn]] void refuse(const std::string& text) {
    throw std::invalid_argument(text);
}

// Of "[ 1 2 3 ]" or "1,2,3". Empty when there is something else in it.
std::vector<int> numbersIn(const char* text) {
    spa_json outer, items;
    spa_json_init(&outer, text, std::strlen(text));
    if (spa_json_enter_array(&outer, &items) <= 0) spa_json_init(&items, text, std::strlen(text));
    std::vector<int> numbers;
    const char* item = nullptr;
    for (int length = 0; (length = spa_json_next(&items, &item)) > 0;) {
        int number = 0;
        if (spa_json_parse_int(item, length, &number) <= 0) return {};
        numbers.push_back(number);
    }
    return numbers;
}

void requireEachOnce(const char* text, std::vector<int> channels) {
    std::sort(channels.begin(), channels.end());
    const auto first = std::lower_bound(channels.begin(), channels.end(), 0);
    const auto twice = std::adjacent_find(first, channels.end());
    if (twice != channels.end()) {
        refuse(std::string("se.channel-map = ") + text + " names channel " + std::to_string(*twice) +
               " twice; give each microphone and the far end its own");
    }
}

void readChannelMap(se_host_options_t& options, const char* text) {
    const std::vector<int> channels = numbersIn(text);
    const bool is_map =
        (channels.size() == SE_HOST_MICROPHONES || channels.size() == SE_HOST_MICROPHONES + 1) &&
        *std::min_element(channels.begin(), channels.end()) >= -1;
    if (!is_map) {
        refuse(std::string("se.channel-map = ") + text +
               " is not a list as [ 1 2 3 4 5 6 7 ]: the captured channels of the microphones 1 to 7, -1 for "
               "one that "
               "is not there, then that of the far end when the capture has one");
    }
    requireEachOnce(text, channels);
    std::copy_n(channels.begin(), SE_HOST_MICROPHONES, options.microphones);
    if (channels.size() > SE_HOST_MICROPHONES) options.far_end_channel = channels.back();
}

void readDeviceModel(se_host_options_t& options, const char* text) {
    const bool yes = spa_atob(text);
    if (!yes && !spa_streq(text, "false") && !spa_streq(text, "0")) {
        refuse(std::string("se.device-model = ") + text + " is neither true nor false");
    }
    options.device_model = yes ? 1 : 0;
}

struct Key {
    const char* name;
    void (*read)(se_host_options_t& options, const char* text);
};

constexpr Key kKeys[] = {
    {"se.engine", [](se_host_options_t& options, const char* text) { options.engine = text; }},
    {"se.folder", [](se_host_options_t& options, const char* text) { options.folder = text; }},
    {"se.tuning", [](se_host_options_t& options, const char* text) { options.tuning = text; }},
    {"se.array", [](se_host_options_t& options, const char* text) { options.array = text; }},
    {"se.channel-map", readChannelMap},
    {"se.device-model", readDeviceModel},
};

std::string keyNames() {
    std::string names;
    for (const Key& key : kKeys) names += (names.empty() ? "" : ", ") + std::string(key.name);
    return names;
}

void readItem(se_host_options_t& options, const spa_dict_item& item) {
    if (!spa_strstartswith(item.key, kPrefix)) return;
    const auto* const key = std::find_if(std::begin(kKeys), std::end(kKeys),
                                         [&](const Key& one) { return spa_streq(one.name, item.key); });
    if (key == std::end(kKeys)) {
        refuse(std::string("aec.args: there is no key ") + item.key + "; the keys are " + keyNames());
    }
    key->read(options, item.value == nullptr ? "" : item.value);
}

int highestChannel(const se_host_options_t& options) {
    return std::max(*std::max_element(std::begin(options.microphones), std::end(options.microphones)),
                    options.far_end_channel);
}

}  // namespace

se_host_options_t optionsOf(const spa_dict* arguments) {
    se_host_options_t options = SE_HOST_OPTIONS_INIT;
    if (arguments == nullptr) return options;
    for (uint32_t i = 0; i < arguments->n_items; ++i) readItem(options, arguments->items[i]);
    return options;
}

void requireFormat(const spa_audio_info_raw& captured, const se_host_options_t& options) {
    if (captured.rate != SE_HOST_SAMPLE_RATE) {
        refuse("the sound would come at " + std::to_string(captured.rate) +
               " Hz, the engine works at 16000 Hz: write audio.rate = 16000 into the args of "
               "libpipewire-module-echo-cancel, and PipeWire resamples");
    }
    const int highest = highestChannel(options);
    if (captured.channels > SPA_AUDIO_MAX_CHANNELS || highest >= static_cast<int>(captured.channels)) {
        refuse("the capture has " + std::to_string(captured.channels) +
               " channels, and the channel map needs channel " + std::to_string(highest) +
               " (counted from 0): write audio.channels = " + std::to_string(highest + 1) +
               " and as many names in audio.position, or a se.channel-map that fits, into the configuration");
    }
}

}  // namespace se_pipewire
