// The result of all trials: means over the seeds, which system is ahead, the machine.
#pragma once

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "bench/engine_vs_peer/trials.h"

namespace engine_vs_peer {

// The same figure of every seed.
struct FigureRow {
    Figure figure;                          // its mean
    std::vector<double> of_seed[kSystems];  // decibels
};

struct Report {
    std::vector<FigureRow> rows;
    bool keeps_talker[kSystems];    // within kMostLevelChange in double talk, with every seed
    double microseconds[kSystems];  // a block, median
    size_t blocks;
};

inline constexpr double kMostLevelChange = 3;  // dB

// needs: at least one trial.
Report makeReport(const std::vector<Trial>& trials);

// Lines, the last one ended.
std::string toText(const Report& report, const EngineText& engine, const TrialOptions& options, int seeds);
nlohmann::ordered_json toJson(const Report& report, const EngineText& engine, const TrialOptions& options,
                              int seeds);

}  // namespace engine_vs_peer
