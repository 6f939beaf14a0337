#include "bench/engine_vs_peer/report.h"

#include <algorithm>
#include <cmath>

namespace engine_vs_peer {
namespace {

// The higher, the better.
double scoreOf(const Target& target, double value) {
    switch (target.aim) {
        case Aim::kAtMost:
            return -value;
        case Aim::kWithin:
            return -std::abs(value);
        case Aim::kAtLeast:
        case Aim::kNotBelowPeer:
            break;
    }
    return value;
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

}  // namespace

void add(const Trial& trial, const std::vector<Recording>& recordings, Report& report) {
    for (const Figure& figure : trial.measure(recordings)) {
        FigureRow& row = rowOf(trial.title, figure, report.rows);
        for (const System s : {kEngine, kPeer}) row.of_seed[s].push_back(figure.values[s]);
    }
    for (const Recording& recording : recordings) {
        const bool far_end = recording.options.echo_level_dbfs != se_scene::kSilent;
        for (const System s : {kEngine, kPeer}) {
            append(recording.outputs.microseconds[s], report.microseconds[s]);
            if (far_end) append(recording.outputs.microseconds[s], report.with_far_end_us[s]);
        }
    }
}

const char* aheadIn(const FigureRow& row) {
    std::vector<double> leads;
    for (size_t i = 0; i < row.of_seed[kEngine].size(); ++i) {
        leads.push_back(scoreOf(row.figure.target, row.of_seed[kEngine][i]) -
                        scoreOf(row.figure.target, row.of_seed[kPeer][i]));
    }
    const Estimate lead = estimate(leads);
    if (!(std::abs(lead.mean) > lead.margin)) return "";
    return lead.mean > 0 ? "engine" : "peer";
}

bool hasTarget(const FigureRow& row) {
    return row.figure.target.aim == Aim::kNotBelowPeer || !std::isnan(row.figure.target.bound);
}

bool isReached(const FigureRow& row) {
    const Target& target = row.figure.target;
    if (target.aim == Aim::kNotBelowPeer) return row.of(kEngine).mean >= row.of(kPeer).mean;
    if (target.aim != Aim::kWithin)
        return scoreOf(target, row.of(kEngine).mean) >= scoreOf(target, target.bound);
    return std::all_of(row.of_seed[kEngine].begin(), row.of_seed[kEngine].end(),
                       [&](double value) { return std::abs(value) <= target.bound; });
}

}  // namespace engine_vs_peer
