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

Cells cellsOf(const FigureRow& row) {
    return {row.scene,
            row.figure.name,
            valueText(row.figure, row.of(kEngine)),
            valueText(row.figure, row.of(kPeer)),
            aheadIn(row),
            targetText(row.figure.target),
            hasTarget(row) ? reachedText(isReached(row)) : ""};
}

// Of the blocks of all seeds.
Cells worstBlock(const Report& report) {
    const Times engine = timesOf(report.microseconds[kEngine]);
    const Times peer = timesOf(report.microseconds[kPeer]);
    const double minutes = static_cast<double>(report.microseconds[kEngine].size()) * kBlockSeconds / 60;
    return {"all scenes",
            stringPrintf("worst block of %.0f min", minutes),
            stringPrintf("%.0f µs", engine.worst),
            stringPrintf("%.0f µs", peer.worst),
            engine.worst < peer.worst ? "engine" : "peer",
            "3 times the median",
            reachedText(engine.worst <= 3 * engine.median)};
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
    table.push_back(worstBlock(report));
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
