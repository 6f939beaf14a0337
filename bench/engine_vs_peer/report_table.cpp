#include "bench/engine_vs_peer/report_table.h"

#include <cmath>

#include "common/string_printf.h"
#include "kernel_check/program/machine.h"

namespace engine_vs_peer {
namespace {

using quill::stringPrintf;

std::string valueText(const Figure& figure, const Estimate& value) {
    const bool is_share = *figure.unit == '\0';
    std::string text = stringPrintf(is_share ? "%.3f" : "%.1f", value.mean);
    if (!std::isnan(value.margin)) text += stringPrintf(is_share ? " ± %.3f" : " ± %.1f", value.margin);
    return is_share ? text : text + " " + figure.unit;
}

std::string voicesText(const std::vector<std::string>& recorded_talkers) {
    if (recorded_talkers.empty()) return "synthetic";
    std::string names;
    for (const std::string& name : recorded_talkers) names += (names.empty() ? "" : ", ") + name;
    return stringPrintf("recordings of %zu people: ", recorded_talkers.size()) + names;
}

const char* reachedText(bool reached) {
    return reached ? "reached" : "not reached";
}

std::vector<Cells> timeRows(const Report& report) {
    const Times engine = timesOf(report.with_far_end_us[kEngine]);
    const Times peer = timesOf(report.with_far_end_us[kPeer]);
    const double worst = quantile(report.microseconds[kEngine], 1);
    const double worst_peer = quantile(report.microseconds[kPeer], 1);
    const double median = quantile(report.microseconds[kEngine], 0.5);
    const double minutes = static_cast<double>(report.microseconds[kEngine].size()) * kBlockSeconds / 60;
    const std::string worst_name = stringPrintf("worst block of %.0f min", minutes);
    const auto row = [](const char* name, double engine_us, double peer_us, const char* target,
                        const char* reached) -> Cells {
        return {"the far end speaks",
                name,
                stringPrintf("%.0f µs", engine_us),
                stringPrintf("%.0f µs", peer_us),
                engine_us < peer_us ? "engine" : "peer",
                target,
                reached};
    };
    std::vector<Cells> rows = {
        row("time per block, median", engine.median, peer.median, "0.8 times the peer's",
            reachedText(engine.median <= 0.8 * peer.median)),
        row("99 % of the blocks", engine.late, peer.late, "", ""),
        row(worst_name.c_str(), worst, worst_peer, "3 times the median", reachedText(worst <= 3 * median))};
    rows.back()[0] = "all scenes";
    return rows;
}

}  // namespace

const Cells kHead = {"scene", "figure", "engine", "peer", "ahead", "to reach", ""};

std::string targetText(const Target& target) {
    if (target.aim == Aim::kNotBelowPeer) return "the peer's";
    if (std::isnan(target.bound)) return "";
    const char* const format = target.aim == Aim::kAtLeast  ? "at least %g"
                               : target.aim == Aim::kAtMost ? "at most %g"
                                                            : "within %g";
    return stringPrintf(format, target.bound);
}

Times timesOf(const std::vector<double>& microseconds) {
    return {quantile(microseconds, 0.5), quantile(microseconds, 0.99), quantile(microseconds, 1)};
}

std::vector<Cells> cellsOf(const Report& report) {
    std::vector<Cells> table;
    for (const FigureRow& row : report.rows) {
        table.push_back({row.scene, row.figure.name, valueText(row.figure, row.of(kEngine)),
                         valueText(row.figure, row.of(kPeer)), aheadIn(row), targetText(row.figure.target),
                         hasTarget(row) ? reachedText(isReached(row)) : ""});
    }
    if (!report.with_far_end_us[kEngine].empty()) {
        for (Cells& cells : timeRows(report)) table.push_back(std::move(cells));
    }
    return table;
}

std::vector<Cells> environmentOf(const RunText& run) {
    return {{"engine", run.engine.build + " (" + run.engine.version + ")"},
            {"kernels", run.engine.kernels},
            {"peer", "SpeexDSP " SPEEXDSP_VERSION " behind a delay-and-sum"},
            {"processor", program::processorName()},
            {"compiler", program::compilerName()},
            {"seeds", stringPrintf("%u to %u", run.options.seed,
                                   run.options.seed + static_cast<uint32_t>(run.seeds) - 1)},
            {"voices", voicesText(run.recorded_talkers)},
            {"times", stringPrintf("the shortest of %d passes, for each block", run.passes)},
            {"rooms", run.options.free_field ? "none" : "drawn, 0.2 to 0.5 s"},
            {"look", run.options.tell_engine
                         ? "both are given the position of the talker"
                         : "the engine searches for the talker, the peer is given its position"}};
}

}  // namespace engine_vs_peer
