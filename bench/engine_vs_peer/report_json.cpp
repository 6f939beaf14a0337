#include <algorithm>

#include "bench/engine_vs_peer/report_table.h"

namespace engine_vs_peer {
namespace {

using Json = nlohmann::ordered_json;

Json estimateJson(const FigureRow& row, System system) {
    const Estimate value = row.of(system);
    return {{"mean", value.mean}, {"margin", value.margin}, {"of_seed", row.of_seed[system]}};
}

Json timesJson(const std::vector<double>& microseconds) {
    const Times times = timesOf(microseconds);
    return {{"median", times.median}, {"99_percent", times.late}, {"worst", times.worst}};
}

// The longest first.
Json longestJson(std::vector<LongBlock> blocks) {
    std::sort(blocks.begin(), blocks.end(),
              [](const auto& a, const auto& b) { return a.microseconds > b.microseconds; });
    Json list = Json::array();
    for (const LongBlock& block : blocks) {
        list.push_back({{"scene", block.scene},
                        {"seed", block.seed},
                        {"second", block.begin_s},
                        {"microseconds", block.microseconds}});
    }
    return list;
}

Json rowsJson(const std::vector<FigureRow>& rows) {
    Json list = Json::array();
    for (const FigureRow& row : rows) {
        Json figure = {{"scene", row.scene},
                       {"figure", row.figure.name},
                       {"unit", row.figure.unit},
                       {"engine", estimateJson(row, kEngine)},
                       {"peer", estimateJson(row, kPeer)},
                       {"ahead", aheadIn(row)},
                       {"to_reach", targetText(row.figure.target)}};
        if (hasTarget(row)) figure["reached"] = isReached(row);
        list.push_back(std::move(figure));
    }
    return list;
}

}  // namespace

Json toJson(const Report& report, const RunText& run) {
    Json document;
    for (const Cells& line : environmentOf(run)) document[line[0]] = line[1];
    document["figures"] = rowsJson(report.rows);
    document["times"] = rowsJson(timesWithFarEnd(report));
    document["microseconds_per_block"] = {{"engine", timesJson(report.microseconds[kEngine])},
                                          {"peer", timesJson(report.microseconds[kPeer])}};
    document["longest_blocks"] = {{"engine", longestJson(report.longest[kEngine])},
                                  {"peer", longestJson(report.longest[kPeer])}};
    return document;
}

}  // namespace engine_vs_peer
