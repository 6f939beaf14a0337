#include "tools/se_host/commands/call_report.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>

#include "common/string_printf.h"
#include "host/health/echo_lag.h"
#include "tools/se_host/sound/exchanged_microphones.h"
#include "tools/se_host/sound/resample.h"
#include "webrtc_common/se_wrapper.h"

namespace se_host {
namespace {

using quill::stringPrintf;
using quill::media::se_wrapper::BLOCK_SIZE;
using Json = nlohmann::ordered_json;

constexpr double kEarliestMs = -2;  // of an echo that the way through the air explains
constexpr double kAtOnceMs = 0.3;   // a tenth of a metre: less than from any loudspeaker
constexpr double kLatestMs = 500;   // of what an engine can be expected to follow
constexpr double kFirstBlockS = static_cast<double>(BLOCK_SIZE) / kEngineSampleRate;
constexpr double kFoundLateS = 5;    // of sound in which an engine should have found the delay
constexpr double kSameDelayMs = 60;  // the engine's estimate leaves room before the echo

bool isSilent(const std::vector<int16_t>& samples) {
    return std::all_of(samples.begin(), samples.end(), [](int16_t sample) { return sample == 0; });
}

// The first one with which nothing is wrong.
int healthyMicrophone(const std::vector<MicrophoneCheck>& checks) {
    const auto healthy = std::find_if(checks.begin(), checks.end(),
                                      [](const MicrophoneCheck& check) { return check.finding.empty(); });
    return healthy == checks.end() ? kCentreMicrophone : healthy->microphone;
}

void addEcho(const Recording& recording, const Processed& processed, CallReport& report) {
    std::vector<int16_t> microphone = channelOf(recording.microphones, healthyMicrophone(report.microphones));
    microphone.resize(recording.frames);
    std::vector<int16_t> far_end = recording.far_end;
    far_end.resize(recording.frames);
    const std::optional<EchoLags> lags = echoLags(far_end, microphone);
    if (!lags) return;
    report.echo_lag_ms = lags->median * 1000.0 / kEngineSampleRate;
    report.echo = echoAlone(echoAloneBlocks(far_end, microphone, processed.output, *lags));
}

bool engineHasTheDelay(const CallReport& report) {
    return report.estimate && std::abs(report.estimate->delay_ms - *report.echo_lag_ms) <= kSameDelayMs;
}

std::string wrongFarEnd(const CallReport& report) {
    if (!report.echo_lag_ms) return {};
    const double lag = *report.echo_lag_ms;
    if (std::abs(lag) < kAtOnceMs) {
        return "the far end is heard without any delay, as in no room: its channel seems to hold a "
               "microphone; see --channel-map and --far-end-channel";
    }
    if (lag < kEarliestMs) {
        return stringPrintf(
            "the far end is late: it comes %.0f ms after its echo in the microphones, so that no engine "
            "can cancel it; delay the microphones or take the far end earlier",
            -lag);
    }
    if (lag > kLatestMs && !engineHasTheDelay(report)) {
        return stringPrintf(
            "the echo is late: it follows the far end by %.0f ms; delay the far end, or shorten what "
            "stands between it and the loudspeaker",
            lag);
    }
    return {};
}

// Seconds of sound of the far end before this time.
double soundBefore(const std::vector<int16_t>& far_end, double end_s) {
    constexpr int kAudible = 33;  // -60 dBFS
    const size_t end = std::min(far_end.size(), static_cast<size_t>(end_s * kEngineSampleRate));
    size_t blocks = 0;
    for (size_t start = 0; start + BLOCK_SIZE <= end; start += BLOCK_SIZE) {
        const auto begin = far_end.begin() + static_cast<ptrdiff_t>(start);
        blocks += std::any_of(begin, begin + BLOCK_SIZE,
                              [](int16_t sample) { return std::abs(sample) > kAudible; });
    }
    return static_cast<double>(blocks * BLOCK_SIZE) / kEngineSampleRate;
}

std::string engineDelay(const CallReport& report, const Recording& recording) {
    if (!report.echo_lag_ms || !report.estimate) return {};
    if (!engineHasTheDelay(report)) {
        return stringPrintf(
            "the engine looks for the echo %.0f ms after the far end, but most of the time it follows by "
            "%.0f ms",
            report.estimate->delay_ms, *report.echo_lag_ms);
    }
    if (soundBefore(recording.far_end, report.estimate->found_s) < kFoundLateS) return {};
    return stringPrintf(
        "the engine has the delay of the echo, %.0f ms, only since %.1f s: it was found late, or it "
        "jumped",
        report.estimate->delay_ms, report.estimate->found_s);
}

Json numberOrNull(const std::optional<double>& number) {
    return number ? Json(*number) : Json(nullptr);
}

// The map that takes each microphone from where it is found.
std::string correctedMap(const std::vector<int>& order, const Recording& recording) {
    const ChannelMap map = recording.channel_map.value_or(ChannelMap());
    std::string text, separator;
    for (const int microphone : order) {
        text += separator + std::to_string(map.microphones[static_cast<size_t>(microphone - 1)]);
        separator = ",";
    }
    return map.far_end ? text + "," + std::to_string(*map.far_end) : text;
}

std::string exchangeFinding(const ExchangedMicrophones& found, const Recording& recording) {
    std::string text, separator;
    for (const MicrophonePair& pair : found.pairs) {
        text += separator + stringPrintf("%d and %d", pair.first, pair.second);
        separator = ", or ";
    }
    if (!text.empty()) text = "the microphones " + text + " seem to have changed places, or ";
    if (!found.order.empty()) {
        text += "the microphones are in another order, which --channel-map " +
                correctedMap(found.order, recording) + " puts right, or ";
    }
    return text.empty() ? text : text + "the array is another one: see --channel-map and --array";
}

// Without -0.
double wholeNumber(double value) {
    return std::round(value) + 0.0;
}

}  // namespace

CallReport callReportOf(const Recording& recording, const Processed& processed, const ArrayFile& array) {
    CallReport report;
    report.has_far_end = recording.has_far_end;
    report.microphones = checkMicrophones(recording);
    report.findings = findingsOf(report.microphones);
    if (report.findings.empty()) {
        const std::string exchange = exchangeFinding(exchangedMicrophones(recording, array), recording);
        if (!exchange.empty()) report.findings.push_back(exchange);
    }
    if (!recording.has_far_end) return report;
    if (!processed.echo.empty()) report.estimate = processed.echo.back();
    addEcho(recording, processed, report);
    std::string finding = wrongFarEnd(report);
    if (finding.empty()) finding = engineDelay(report, recording);
    if (isSilent(recording.far_end)) finding = "the far end is silent: its channel or file holds no sound";
    if (!finding.empty()) report.findings.push_back(finding);
    return report;
}

std::string echoPathText(const CallReport& report) {
    if (!report.has_far_end) return {};
    if (!report.echo_lag_ms) return "no echo of the far end is heard";
    std::string text =
        stringPrintf("the echo follows the far end by %.0f ms", wholeNumber(*report.echo_lag_ms));
    if (report.echo) {
        const double loss = report.echo->return_loss_db;
        text += stringPrintf(", %.1f dB %s it", std::abs(loss), loss < 0 ? "above" : "below");
    }
    if (!report.estimate) return text;
    if (report.estimate->found_s <= kFirstBlockS && !engineHasTheDelay(report))
        return text + "; engine: no delay found";
    return text + stringPrintf("; engine: %.0f ms since %.2f s, drift %.0f ppm", report.estimate->delay_ms,
                               report.estimate->found_s, report.estimate->drift_ppm);
}

Json echoJson(const CallReport& report) {
    if (!report.has_far_end) return nullptr;
    Json json{{"lag_ms", numberOrNull(report.echo_lag_ms)}, {"alone", nullptr}, {"engine", nullptr}};
    if (report.echo) {
        json["alone"] = {{"seconds", report.echo->seconds},
                         {"return_loss_db", report.echo->return_loss_db},
                         {"return_loss_enhancement_db", numberOrNull(report.echo->lowered_db)}};
    }
    if (report.estimate) {
        json["engine"] = {{"delay_ms", report.estimate->delay_ms},
                          {"delay_since_seconds", report.estimate->found_s},
                          {"drift_ppm", report.estimate->drift_ppm}};
    }
    return json;
}

}  // namespace se_host
