#include <cmath>

#include "tools/se_host/commands/microphones_json.h"
#include "tools/se_host/commands/summary.h"
#include "tools/se_host/engine/cycle_split_output.h"
#include "tools/se_host/sound/resample.h"

namespace se_host {

using Json = nlohmann::ordered_json;

namespace {

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

Json effectJson(const Summary& summary) {
    if (!summary.effect) return nullptr;
    const auto numberOrNull = [](const std::optional<double>& db) { return db ? Json(*db) : Json(nullptr); };
    return {{"echo_return_loss_enhancement_db", numberOrNull(summary.effect->echo_lowered_db)},
            {"noise_reduction_db", numberOrNull(summary.effect->noise_lowered_db)},
            {"talker_change_db", numberOrNull(summary.effect->talker_changed_db)}};
}

Json cyclesJson(const std::optional<CycleShares>& cycles) {
    return cycles ? toJson(*cycles) : Json(nullptr);
}

Json comparisonJson(const Summary& summary) {
    if (!summary.engine_routines) return nullptr;
    const Comparison& own = *summary.engine_routines;
    return {{"processing_seconds", own.processing_seconds},
            {"real_time_factor", summary.realTimeFactor(own.processing_seconds)},
            {"largest_difference", own.largest_difference},
            {"difference_db", own.largest_difference == 0 ? Json(nullptr) : Json(own.difference_db)},
            {"cycles", cyclesJson(own.cycles)}};
}

Json blockTimesJson(const BlockTimes& times) {
    return {{"mean", times.mean}, {"percentile_99", times.percentile_99}, {"longest", times.longest}};
}

Json sharesJson(const Summary& summary) {
    Json shares = Json::array();
    for (const LocationShare& share : locationShares(summary.directions)) {
        shares.push_back({{"location", share.location},
                          {"azimuth_degrees", share.azimuth_degrees},
                          {"share", share.share},
                          {"confidence", share.confidence}});
    }
    return shares;
}

Json directionsJson(const Summary& summary) {
    Json directions = Json::array();
    for (const Direction& direction : summary.directions) {
        directions.push_back({{"location", direction.location}, {"confidence", direction.confidence}});
    }
    return directions;
}

}  // namespace

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
            {"real_time_factor", summary.realTimeFactor(summary.processing_seconds)},
            {"block_seconds", blockTimesJson(summary.block_times)},
            {"levels", levelsJson(summary)},
            {"microphones", microphonesJson(summary.call.microphones)},
            {"talker", talkerJson(summary)},
            {"azimuth_shares", sharesJson(summary)},
            {"echo", echoJson(summary.call)},
            {"effect", effectJson(summary)},
            {"cycles", cyclesJson(summary.cycles)},
            {"engine_routines", comparisonJson(summary)},
            {"findings", summary.call.findings},
            {"directions", directionsJson(summary)}};
}

}  // namespace se_host
