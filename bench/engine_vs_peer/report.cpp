#include "bench/engine_vs_peer/report.h"

#include <algorithm>
#include <cmath>

namespace engine_vs_peer {
namespace {

constexpr size_t kLongestOfScene = 3;

// The higher, the better.
double scoreOf(const Target& target, double value) {
    switch (target.aim) {
        case Aim::kAtMost:
        case Aim::kTimesPeer:
            return -value;
        case Aim::kWithin:
            return -std::abs(value);
        case Aim::kAtLeast:
        case Aim::kNotBelowPeer:
            break;
    }
    return value;
}

std::vector<double> scoresOf(const FigureRow& row, System system) {
    std::vector<double> scores;
    for (const double value : row.of_seed[system]) scores.push_back(scoreOf(row.figure.target, value));
    return scores;
}

FigureRow& rowOf(const std::string& scene, const Figure& figure, std::vector<FigureRow>& rows) {
    const auto same = std::find_if(rows.begin(), rows.end(), [&](const FigureRow& row) {
        return row.scene == scene && row.figure.name == figure.name;
    });
    if (same != rows.end()) return *same;
    rows.push_back({scene, figure, {}});
    return rows.back();
}

void append(const std::vector<double>& from, std::vector<double>& to) {
    to.insert(to.end(), from.begin(), from.end());
}

void addLongest(const std::vector<double>& microseconds, const std::string& scene, uint32_t seed,
                std::vector<LongBlock>& longest) {
    std::vector<LongBlock> blocks;
    for (size_t i = 0; i < microseconds.size(); ++i)
        blocks.push_back({scene, seed, static_cast<double>(i) * kBlockSeconds, microseconds[i]});
    const auto end = blocks.begin() + static_cast<ptrdiff_t>(std::min(kLongestOfScene, blocks.size()));
    std::partial_sort(blocks.begin(), end, blocks.end(),
                      [](const auto& a, const auto& b) { return a.microseconds > b.microseconds; });
    longest.insert(longest.end(), blocks.begin(), end);
}

}  // namespace

void add(const Trial& trial, uint32_t seed, const std::vector<Recording>& recordings, Report& report) {
    for (const Figure& figure : trial.measure(recordings)) {
        if (std::isnan(figure.values[kEngine])) continue;  // nothing to measure: a talker without a pause
        FigureRow& row = rowOf(trial.title, figure, report.rows);
        for (const System s : {kEngine, kPeer}) row.of_seed[s].push_back(figure.values[s]);
    }
    for (const Recording& recording : recordings) {
        const bool far_end = recording.options.echo_level_dbfs != se_scene::kSilent;
        for (const System s : {kEngine, kPeer}) {
            const std::vector<double>& times = recording.outputs.microseconds[s];
            append(times, report.microseconds[s]);
            addLongest(times, trial.title, seed, report.longest[s]);
            append(times, far_end ? report.with_far_end[seed].of[s] : report.without_far_end.of[s]);
        }
    }
}

std::vector<FigureRow> timesWithFarEnd(const Report& report) {
    const auto timesAt = [&](const char* name, double share, const Target& target) {
        FigureRow row = {"the far end speaks", {name, "µs", target, {}}, {}};
        for (const auto& [seed, blocks] : report.with_far_end) {
            for (const System s : {kEngine, kPeer}) row.of_seed[s].push_back(quantile(blocks.of[s], share));
        }
        return row;
    };
    if (report.with_far_end.empty()) return {};
    return {timesAt("time per block, median", 0.5, {Aim::kTimesPeer, 0.8}),
            timesAt("99 % of the blocks", 0.99, {Aim::kAtMost})};
}

const char* aheadIn(const FigureRow& row) {
    std::vector<double> leads = scoresOf(row, kEngine);
    const std::vector<double> of_peer = scoresOf(row, kPeer);
    for (size_t i = 0; i < leads.size(); ++i) leads[i] -= of_peer[i];
    const Estimate lead = estimate(leads);
    if (!(std::abs(lead.mean) > lead.margin)) return "";
    return lead.mean > 0 ? "engine" : "peer";
}

bool hasTarget(const FigureRow& row) {
    return row.figure.target.aim == Aim::kNotBelowPeer || !std::isnan(row.figure.target.bound);
}

bool isReached(const FigureRow& row) {
    const Target& target = row.figure.target;
    const double of_peer = estimate(scoresOf(row, kPeer)).mean;
    const double needed = target.aim == Aim::kNotBelowPeer ? of_peer
                          : target.aim == Aim::kTimesPeer  ? target.bound * of_peer
                                                           : scoreOf(target, target.bound);
    return estimate(scoresOf(row, kEngine)).mean >= needed;
}

}  // namespace engine_vs_peer
