#include "bench/engine_vs_peer/report_table.h"

#include <cmath>

#include "common/string_printf.h"

namespace engine_vs_peer {
namespace {

using quill::stringPrintf;

std::string valueText(const Figure& figure, const Estimate& value) {
    const bool is_share = *figure.unit == '\0';
    std::string text = stringPrintf(is_share ? "%.3f" : "%.1f", value.mean);
    if (!std::isnan(value.margin)) text += stringPrintf(is_share ? " ± %.3f" : " ± %.1f", value.margin);
    return is_share ? text : text + " " + figure.unit;
}

const char* reachedText(bool reached) {
    return reached ? "reached" : "not reached";
}

Cells cellsOf(const FigureRow& row) {
    return {row.scene,
            row.figure.name,
            valueText(row.figure, row.of(kEngine)),
            valueText(row.figure, row.of(kPeer)),
            aheadIn(row),
            targetText(row.figure.target),
            hasTarget(row) ? reachedText(isReached(row)) : ""};
}

Cells worstBlock(const char* scenes, const Blocks& blocks) {
    const Times engine = timesOf(blocks.of[kEngine]);
    const Times peer = timesOf(blocks.of[kPeer]);
    const double minutes = static_cast<double>(blocks.of[kEngine].size()) * kBlockSeconds / 60;
    return {scenes,
            stringPrintf("worst block of %.0f min", minutes),
            stringPrintf("%.0f µs", engine.worst),
            stringPrintf("%.0f µs", peer.worst),
            engine.worst < peer.worst ? "engine" : "peer",
            stringPrintf("3 times their median, %.0f µs", engine.median),
            reachedText(engine.worst <= 3 * engine.median)};
}

// A block without a far end takes a third of the time of one with it, so each kind has a median of its own.
std::vector<Cells> worstBlocks(const Report& report) {
    Blocks with_far_end;
    for (const auto& [seed, blocks] : report.with_far_end) {
        for (const System s : {kEngine, kPeer}) {
            with_far_end.of[s].insert(with_far_end.of[s].end(), blocks.of[s].begin(), blocks.of[s].end());
        }
    }
    std::vector<Cells> rows;
    if (!report.with_far_end.empty()) rows.push_back(worstBlock("the far end speaks", with_far_end));
    if (!report.without_far_end.of[kEngine].empty())
        rows.push_back(worstBlock("no far end", report.without_far_end));
    return rows;
}

}  // namespace

const Cells kHead = {"scene", "figure", "engine", "peer", "ahead", "to reach", ""};

std::string targetText(const Target& target) {
    if (target.aim == Aim::kNotBelowPeer) return "the peer's";
    if (std::isnan(target.bound)) return "";
    const char* const format = target.aim == Aim::kAtLeast     ? "at least %g"
                               : target.aim == Aim::kAtMost    ? "at most %g"
                               : target.aim == Aim::kTimesPeer ? "%g times the peer's"
                                                               : "within %g";
    return stringPrintf(format, target.bound);
}

Times timesOf(const std::vector<double>& microseconds) {
    return {quantile(microseconds, 0.5), quantile(microseconds, 0.99), quantile(microseconds, 1)};
}

std::vector<Cells> cellsOf(const Report& report) {
    std::vector<Cells> table;
    for (const FigureRow& row : report.rows) table.push_back(cellsOf(row));
    for (const FigureRow& row : timesWithFarEnd(report)) table.push_back(cellsOf(row));
    for (const Cells& row : worstBlocks(report)) table.push_back(row);
    return table;
}

}  // namespace engine_vs_peer
