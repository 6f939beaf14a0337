#include "tools/se_host/commands/microphones_json.h"

#include <cmath>

namespace se_host {

using Json = nlohmann::ordered_json;

Json microphonesJson(const std::vector<MicrophoneCheck>& checks) {
    Json microphones = Json::array();
    for (const MicrophoneCheck& check : checks) {
        microphones.push_back(
            {{"microphone", check.microphone},
             {"rms_dbfs", std::isinf(check.level_dbfs) ? Json(nullptr) : Json(check.level_dbfs)},
             {"correlation", check.correlation},
             {"finding", check.finding.empty() ? Json(nullptr) : Json(check.finding)}});
    }
    return microphones;
}

}  // namespace se_host
