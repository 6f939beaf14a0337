// What a recording and a run tell about the call, without the parts of a simulated one: the echo, and what is wrong with
// the far end or a microphone.
#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "host/engine/array_file.h"
#include "tools/se_host/engine/echo_estimate.h"
#include "tools/se_host/engine/processing.h"
#include "tools/se_host/sound/echo_alone.h"
#include "tools/se_host/sound/microphone_check.h"

namespace se_host {

struct CallReport {
    bool has_far_end = false;
    std::optional<double> echo_lag_ms;  // by which the echo follows the far end; nothing: no echo is heard
    std::optional<EchoAlone> echo;      // where only the far end speaks
    std::optional<EchoEstimate> estimate;
    std::vector<MicrophoneCheck> microphones;
    std::vector<std::string> findings;  // a sentence each
};

// `array`: where the microphones should stand.
CallReport callReportOf(const Recording& recording, const Processed& processed, const ArrayFile& array);

// The line of the echo, without its label; empty without a far end.
std::string echoPathText(const CallReport& report);

nlohmann::ordered_json echoJson(const CallReport& report);

}  // namespace se_host
