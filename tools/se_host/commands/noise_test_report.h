// The results of `se_host noise-test` as text, as JSON and as a picture. Microphone N is that of the device's channel N.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "host/engine/engine.h"
#include "tools/se_host/sound/microphone_check.h"
#include "webrtc_common/se_wrapper.h"

namespace se_host {

struct NoiseTestReport {
    std::string output;
    std::string picture;  // empty: none
    std::string sound;    // its source
    std::string build;
    std::string version;
    size_t blocks = 0;  // duration of the test
    quill::media::se_wrapper::NoiseTestResults results{};
    std::vector<MicrophoneCheck> microphones;  // of the sound
};

std::string toText(const NoiseTestReport& report);
nlohmann::ordered_json toJson(const NoiseTestReport& report);

// A script for Picture::draw: a curve a microphone above a map of all values.
std::string toScript(const NoiseTestReport& report);

}  // namespace se_host
