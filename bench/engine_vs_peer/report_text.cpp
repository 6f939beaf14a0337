// The report as a table, for terminals and in Markdown, and as JSON.
#include <algorithm>
#include <cmath>

#include "bench/engine_vs_peer/report.h"
#include "common/string_printf.h"
#include "kernel_check/program/machine.h"

namespace engine_vs_peer {
namespace {

using quill::stringPrintf;
using Json = nlohmann::ordered_json;
using Cells = std::vector<std::string>;

const Cells kHead = {"scene", "figure", "engine", "peer", "ahead", "to reach", ""};

std::string valueText(const Figure& figure, const Estimate& value) {
    const bool is_share = *figure.unit == '\0';
    std::string text = stringPrintf(is_share ? "%.3f" : "%.1f", value.mean);
    if (!std::isnan(value.margin)) text += stringPrintf(is_share ? " ± %.3f" : " ± %.1f", value.margin);
    return is_share ? text : text + " " + figure.unit;
}

std::string targetText(const Target& target) {
    if (target.aim == Aim::kNotBelowPeer) return "the peer's";
    if (std::isnan(target.bound)) return "";
    const char* const format = target.aim == Aim::kAtLeast  ? "at least %g"
                               : target.aim == Aim::kAtMost ? "at most %g"
                                                            : "within %g";
    return stringPrintf(format, target.bound);
}

const char* reachedText(bool reached) {
    return reached ? "reached" : "not reached";
}

struct Times {
    double median, late, worst;  // late: 99 %
};

Times timesOf(const std::vector<double>& microseconds) {
    return {quantile(microseconds, 0.5), quantile(microseconds, 0.99), quantile(microseconds, 1)};
}

struct TimeTexts {
    std::string engine, peer;
};

std::vector<Cells> timeRows(const Report& report) {
    const Times engine = timesOf(report.with_far_end_us[kEngine]);
    const Times peer = timesOf(report.with_far_end_us[kPeer]);
    const double worst = quantile(report.microseconds[kEngine], 1);
    const double worst_peer = quantile(report.microseconds[kPeer], 1);
    const double median = quantile(report.microseconds[kEngine], 0.5);
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
        row("worst block", worst, worst_peer, "3 times the median", reachedText(worst <= 3 * median))};
    rows.back()[0] = "all scenes";
    return rows;
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

// Characters of UTF-8.
size_t widthOf(const std::string& text) {
    return static_cast<size_t>(
        std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xC0) != 0x80; }));
}

std::string aligned(std::vector<Cells> table) {
    table.insert(table.begin(), kHead);
    std::string text;
    std::vector<size_t> widths(kHead.size());
    for (const Cells& cells : table) {
        for (size_t i = 0; i < cells.size(); ++i) widths[i] = std::max(widths[i], widthOf(cells[i]));
    }
    for (const Cells& cells : table) {
        std::string line;
        for (size_t i = 0; i < cells.size(); ++i) {
            line += cells[i] + std::string(widths[i] + 2 - widthOf(cells[i]), ' ');
        }
        text += line.substr(0, line.find_last_not_of(' ') + 1) + "\n";
    }
    return text;
}

std::string markdownLine(const Cells& cells) {
    std::string line = "|";
    for (const std::string& cell : cells) line += " " + cell + " |";
    return line + "\n";
}

std::vector<Cells> environmentOf(const RunText& run) {
    return {{"engine", run.engine.build + " (" + run.engine.version + ")"},
            {"kernels", run.engine.kernels},
            {"peer", "SpeexDSP " SPEEXDSP_VERSION " behind a delay-and-sum"},
            {"processor", program::processorName()},
            {"compiler", program::compilerName()},
            {"seeds", stringPrintf("%u to %u", run.options.seed,
                                   run.options.seed + static_cast<uint32_t>(run.seeds) - 1)},
            {"rooms", run.options.free_field ? "none" : "drawn, 0.2 to 0.5 s"},
            {"look", run.options.tell_engine
                         ? "both are given the position of the talker"
                         : "the engine searches for the talker, the peer is given its position"}};
}

size_t reachedCount(const std::vector<Cells>& table) {
    return static_cast<size_t>(std::count_if(table.begin(), table.end(),
                                             [](const Cells& cells) { return cells.back() == "reached"; }));
}

size_t targetCount(const std::vector<Cells>& table) {
    return static_cast<size_t>(
        std::count_if(table.begin(), table.end(), [](const Cells& cells) { return !cells.back().empty(); }));
}

Json estimateJson(const FigureRow& row, System system) {
    const Estimate value = row.of(system);
    return {{"mean", value.mean}, {"margin", value.margin}, {"of_seed", row.of_seed[system]}};
}

Json timesJson(const std::vector<double>& microseconds) {
    const Times times = timesOf(microseconds);
    return {{"median", times.median}, {"99_percent", times.late}, {"worst", times.worst}};
}

}  // namespace

std::string toText(const Report& report, const RunText& run) {
    std::string text;
    for (const Cells& line : environmentOf(run))
        text += stringPrintf("%-11s", line[0].c_str()) + line[1] + "\n";
    const std::vector<Cells> table = cellsOf(report);
    return text + "\n" + aligned(table) +
           stringPrintf("\n%zu of %zu reached\n", reachedCount(table), targetCount(table));
}

std::string toMarkdown(const Report& report, const RunText& run, const std::string& picture) {
    const std::vector<Cells> table = cellsOf(report);
    std::string text =
        "# The engine beside a peer\n\n"
        "Written by `engine_vs_peer --document`; how to read it: "
        "[benchmarks.md](../benchmarks.md#engine_vs_peer).\n\n"
        "![The figures of both systems](" +
        picture + ")\n\n";
    for (const Cells& line : environmentOf(run)) text += "- " + line[0] + ": " + line[1] + "\n";
    text += stringPrintf("- reached: %zu of %zu\n\n", reachedCount(table), targetCount(table));
    text += markdownLine(kHead) + "|---|---|---|---|---|---|---|\n";
    std::string scene;
    for (Cells cells : table) {
        if (cells[0] == scene) {
            cells[0].clear();
        } else {
            scene = cells[0];
        }
        text += markdownLine(cells);
    }
    return text;
}

Json toJson(const Report& report, const RunText& run) {
    Json figures = Json::array();
    for (const FigureRow& row : report.rows) {
        Json figure = {{"scene", row.scene},
                       {"figure", row.figure.name},
                       {"unit", row.figure.unit},
                       {"engine", estimateJson(row, kEngine)},
                       {"peer", estimateJson(row, kPeer)},
                       {"ahead", aheadIn(row)},
                       {"to_reach", targetText(row.figure.target)}};
        if (hasTarget(row)) figure["reached"] = isReached(row);
        figures.push_back(std::move(figure));
    }
    Json document;
    for (const Cells& line : environmentOf(run)) document[line[0]] = line[1];
    document["figures"] = std::move(figures);
    if (!report.with_far_end_us[kEngine].empty()) {
        document["microseconds_per_block_with_far_end"] = {
            {"engine", timesJson(report.with_far_end_us[kEngine])},
            {"peer", timesJson(report.with_far_end_us[kPeer])}};
    }
    return document;
}

}  // namespace engine_vs_peer
