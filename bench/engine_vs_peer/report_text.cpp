// The report as a table, for terminals and in Markdown.
#include <algorithm>

#include "bench/engine_vs_peer/report_table.h"
#include "common/string_printf.h"

namespace engine_vs_peer {
namespace {

using quill::stringPrintf;

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

size_t reachedCount(const std::vector<Cells>& table) {
    return static_cast<size_t>(std::count_if(table.begin(), table.end(),
                                             [](const Cells& cells) { return cells.back() == "reached"; }));
}

size_t targetCount(const std::vector<Cells>& table) {
    return static_cast<size_t>(
        std::count_if(table.begin(), table.end(), [](const Cells& cells) { return !cells.back().empty(); }));
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
        std::string(run.recorded_talkers.empty()
                        ? "# The engine beside a peer\n\nWritten by `engine_vs_peer --document`"
                        : "# The engine beside a peer, with real speech\n\n"
                          "Written by `bench/real_speech/run --document`") +
        "; how to read it: [benchmarks.md](../benchmarks.md#engine_vs_peer).\n\n"
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

}  // namespace engine_vs_peer
