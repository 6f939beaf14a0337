#include "bench/engine_vs_peer/report.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <numeric>

#include "common/string_printf.h"
#include "kernel_check/program/machine.h"

namespace engine_vs_peer {
namespace {

using quill::stringPrintf;
using Json = nlohmann::ordered_json;

constexpr double kTie = 0.05;  // dB: less than the table shows

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

double mean(const std::vector<double>& values) {
    return std::accumulate(values.begin(), values.end(), 0.0) / static_cast<double>(values.size());
}

FigureRow& rowOf(const Figure& figure, std::vector<FigureRow>& rows) {
    const auto same = std::find_if(rows.begin(), rows.end(), [&](const FigureRow& row) {
        return std::strcmp(row.figure.scene, figure.scene) == 0 &&
               std::strcmp(row.figure.name, figure.name) == 0;
    });
    if (same != rows.end()) return *same;
    rows.push_back({figure, {}});
    return rows.back();
}

void judgeTalker(Report& report) {
    for (const FigureRow& row : report.rows) {
        if (std::strcmp(row.figure.scene, kDoubleTalk) != 0 ||
            std::strcmp(row.figure.name, kLevelChange) != 0) {
            continue;
        }
        for (size_t s = 0; s < kSystems; ++s) {
            report.keeps_talker[s] = std::all_of(row.of_seed[s].begin(), row.of_seed[s].end(),
                                                 [](double db) { return std::abs(db) <= kMostLevelChange; });
        }
    }
}

bool counts(const Report& report, const Figure& figure, size_t system) {
    return !figure.of_echo || report.keeps_talker[system];
}

// Above 0: the engine is better.
double leadOf(const Report& report, const Figure& figure) {
    const bool engine = counts(report, figure, kEngine);
    const bool peer = counts(report, figure, kPeer);
    if (engine != peer) return engine ? HUGE_VAL : -HUGE_VAL;
    const double* db = figure.decibels;
    return figure.better == Better::kHigher ? db[kEngine] - db[kPeer]
                                            : std::abs(db[kPeer]) - std::abs(db[kEngine]);
}

const char* aheadText(double lead) {
    return std::abs(lead) < kTie ? "neither" : lead > 0 ? "engine" : "peer";
}

// In brackets: does not count.
std::string valueText(const Report& report, const Figure& figure, size_t system) {
    const char* const format = counts(report, figure, system) ? "%+.1f dB" : "(%+.1f dB)";
    return stringPrintf(format, figure.decibels[system]);
}

std::string tableLine(const char* scene, const char* name, const std::string& engine, const std::string& peer,
                      const char* ahead) {
    return stringPrintf("%-20s %-40s %12s %12s  %s\n", scene, name, engine.c_str(), peer.c_str(), ahead);
}

std::string textOf(double value) {
    return stringPrintf("%.0f us", value);
}

Json figureJson(const Report& report, const FigureRow& row) {
    const Figure& figure = row.figure;
    return {{"scene", figure.scene},
            {"figure", figure.name},
            {"unit", "dB"},
            {"engine", figure.decibels[kEngine]},
            {"peer", figure.decibels[kPeer]},
            {"engine_counts", counts(report, figure, kEngine)},
            {"peer_counts", counts(report, figure, kPeer)},
            {"ahead", aheadText(leadOf(report, figure))},
            {"engine_of_seed", row.of_seed[kEngine]},
            {"peer_of_seed", row.of_seed[kPeer]}};
}

}  // namespace

Report makeReport(const std::vector<Trial>& trials) {
    Report report{{}, {true, true}, {}, 0};
    std::vector<double> microseconds[kSystems];
    for (const Trial& trial : trials) {
        for (const Figure& figure : trial.figures) {
            FigureRow& row = rowOf(figure, report.rows);
            for (size_t s = 0; s < kSystems; ++s) row.of_seed[s].push_back(figure.decibels[s]);
        }
        for (size_t s = 0; s < kSystems; ++s) {
            microseconds[s].insert(microseconds[s].end(), trial.microseconds[s].begin(),
                                   trial.microseconds[s].end());
        }
    }
    for (FigureRow& row : report.rows) {
        for (size_t s = 0; s < kSystems; ++s) row.figure.decibels[s] = mean(row.of_seed[s]);
    }
    judgeTalker(report);
    for (size_t s = 0; s < kSystems; ++s) report.microseconds[s] = median(microseconds[s]);
    report.blocks = microseconds[kEngine].size();
    return report;
}

std::string toText(const Report& report, const EngineText& engine, const TrialOptions& options, int seeds) {
    std::string text;
    text += "engine     " + engine.build + " (" + engine.version +
            ")\n"
            "kernels    " +
            engine.kernels + "\n";
    text += "peer       SpeexDSP " SPEEXDSP_VERSION " behind a delay-and-sum\n";
    text += "processor  " + program::processorName() + "\n";
    text += "compiler   " + program::compilerName() + "\n";
    text += stringPrintf("scenes     %g s each, seeds %u to %u, talker at %g degrees, noise %g dB below\n",
                         options.seconds, options.seed, options.seed + static_cast<uint32_t>(seeds) - 1,
                         options.azimuth_deg, options.snr_db);
    text += options.tell_engine
                ? "look       both are given the position of the talker\n\n"
                : "look       the engine searches for the talker, the peer is given its position\n\n";
    text += tableLine("scene", "figure, mean of the seeds", "engine", "peer", "ahead");
    for (const FigureRow& row : report.rows) {
        const Figure& figure = row.figure;
        text += tableLine(figure.scene, figure.name, valueText(report, figure, kEngine),
                          valueText(report, figure, kPeer), aheadText(leadOf(report, figure)));
    }
    const double ratio = report.microseconds[kEngine] / report.microseconds[kPeer];
    text += tableLine("all", "time per block of 10 ms, median", textOf(report.microseconds[kEngine]),
                      textOf(report.microseconds[kPeer]), ratio < 1 ? "engine" : "peer");
    text += stringPrintf("\nThe engine takes %.2f times as long as the peer.\n", ratio);
    if (!report.keeps_talker[kEngine] || !report.keeps_talker[kPeer]) {
        text += stringPrintf(
            "In brackets: does not count, because with some seed the talker's level in double talk changes\n"
            "by more than %g dB.\n",
            kMostLevelChange);
    }
    return text;
}

Json toJson(const Report& report, const EngineText& engine, const TrialOptions& options, int seeds) {
    Json figures = Json::array();
    for (const FigureRow& row : report.rows) figures.push_back(figureJson(report, row));
    return {{"engine", {{"build", engine.build}, {"version", engine.version}, {"kernels", engine.kernels}}},
            {"peer", {{"library", "SpeexDSP"}, {"version", SPEEXDSP_VERSION}}},
            {"processor", program::processorName()},
            {"compiler", program::compilerName()},
            {"scenes",
             {{"seconds", options.seconds},
              {"first_seed", options.seed},
              {"seeds", seeds},
              {"azimuth_deg", options.azimuth_deg},
              {"snr_db", options.snr_db},
              {"array_radius_m", options.array_radius_m},
              {"engine_is_told", options.tell_engine}}},
            {"figures", figures},
            {"microseconds_per_block",
             {{"engine", report.microseconds[kEngine]},
              {"peer", report.microseconds[kPeer]},
              {"ratio", report.microseconds[kEngine] / report.microseconds[kPeer]},
              {"blocks", report.blocks}}}};
}

}  // namespace engine_vs_peer
