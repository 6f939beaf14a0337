#include "tools/se_host/summary.h"

#include <cmath>

#include "common/string_printf.h"
#include "tools/se_host/resample.h"

namespace se_host {
namespace {

using quill::stringPrintf;
using Json = nlohmann::ordered_json;

constexpr size_t kCentreMicrophone = 1;  // channel

std::string line(const char* label, const std::string& text) {
    return stringPrintf("  %-10s", label) + text + "\n";
}

std::string engineText(const Summary& summary) {
    std::string text = summary.build + " (" + summary.version + ")";
    return summary.bypass ? text + ", bypassed: the output is channel 7" : text;
}

std::string soundText(const Summary& summary) {
    std::string text =
        stringPrintf("%.2f s, %d channels, %zu blocks", summary.seconds, summary.channels, summary.blocks);
    if (summary.file_sample_rate == kEngineSampleRate) return text;
    return text + stringPrintf(", resampled from %d to %d Hz", summary.file_sample_rate, kEngineSampleRate);
}

std::string levelText(double dbfs) {
    return std::isinf(dbfs) ? std::string("silence") : stringPrintf("%.1f dBFS", dbfs);
}

std::string inAndOutText(const Summary& summary, double Level::*dbfs) {
    return levelText(summary.input_levels[kCentreMicrophone].*dbfs) + " at the centre microphone, " +
           levelText(summary.output_level.*dbfs) + " in the output";
}

std::string talkerText(const Summary& summary) {
    if (!summary.talker) return "no direction found";
    return stringPrintf("at %d degrees (location %d) in %.0f %% of the blocks, confidence %.2f",
                        summary.talker->azimuth_degrees, summary.talker->location,
                        100 * summary.talker->share, summary.talker->confidence);
}

std::string speedText(const Summary& summary) {
    return stringPrintf("%.2f s, %.0f times as fast as spoken (real-time factor %.4f)",
                        summary.processing_seconds, 1 / summary.realTimeFactor(), summary.realTimeFactor());
}

Json levelJson(const Level& level) {
    const auto finiteOrNull = [](double dbfs) { return std::isinf(dbfs) ? Json(nullptr) : Json(dbfs); };
    return {{"rms_dbfs", finiteOrNull(level.rms_dbfs)},
            {"peak_dbfs", finiteOrNull(level.peak_dbfs)},
            {"pause_dbfs", finiteOrNull(level.pause_dbfs)}};
}

Json engineJson(const Summary& summary) {
    return {{"build", summary.build},
            {"version", summary.version},
            {"capabilities",
             {{"beam_forming", summary.has_beam_forming}, {"noise_tests", summary.has_noise_tests}}}};
}

Json levelsJson(const Summary& summary) {
    Json input = Json::array();
    for (const Level& level : summary.input_levels) input.push_back(levelJson(level));
    return {{"input", input}, {"output", levelJson(summary.output_level)}};
}

Json talkerJson(const Summary& summary) {
    if (!summary.talker) return nullptr;
    return {{"location", summary.talker->location},
            {"azimuth_degrees", summary.talker->azimuth_degrees},
            {"share", summary.talker->share},
            {"confidence", summary.talker->confidence}};
}

Json directionsJson(const Summary& summary) {
    Json directions = Json::array();
    for (const Direction& direction : summary.directions) {
        directions.push_back({{"location", direction.location}, {"confidence", direction.confidence}});
    }
    return directions;
}

}  // namespace

std::string toText(const Summary& summary) {
    std::string text = summary.input + " -> " + summary.output + "\n";
    text += line("engine", engineText(summary));
    text += line("sound", soundText(summary));
    text += line("far end", summary.far_end.empty() ? "none" : summary.far_end);
    text += line("level", inAndOutText(summary, &Level::rms_dbfs));
    text += line("pauses", inAndOutText(summary, &Level::pause_dbfs));
    if (!summary.bypass) text += line("talker", talkerText(summary));
    return text + line("took", speedText(summary));
}

Json toJson(const Summary& summary) {
    return {{"input", summary.input},
            {"output", summary.output},
            {"far_end", summary.far_end.empty() ? Json(nullptr) : Json(summary.far_end)},
            {"bypass", summary.bypass},
            {"engine", engineJson(summary)},
            {"blocks", summary.blocks},
            {"seconds", summary.seconds},
            {"channels", summary.channels},
            {"sample_rate", kEngineSampleRate},
            {"file_sample_rate", summary.file_sample_rate},
            {"processing_seconds", summary.processing_seconds},
            {"real_time_factor", summary.realTimeFactor()},
            {"levels", levelsJson(summary)},
            {"talker", talkerJson(summary)},
            {"directions", directionsJson(summary)}};
}

}  // namespace se_host
