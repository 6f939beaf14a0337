// The state of the microphones, as every report of them has it.
#pragma once

#include <nlohmann/json.hpp>
#include <vector>

#include "tools/se_host/sound/microphone_check.h"

namespace se_host {

nlohmann::ordered_json microphonesJson(const std::vector<MicrophoneCheck>& checks);

}  // namespace se_host
