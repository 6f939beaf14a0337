// The result of all trials: each figure over the seeds, which system is ahead, and whether the engine reached what it
// has to.
#pragma once

#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "bench/engine_vs_peer/statistics.h"
#include "bench/engine_vs_peer/trials.h"

namespace engine_vs_peer {

// A figure of every seed.
struct FigureRow {
    std::string scene;
    Figure figure;  // of the first seed
    std::vector<double> of_seed[kSystems];

    Estimate of(System system) const { return estimate(of_seed[system]); }
};

// Microseconds of each block.
struct Blocks {
    std::vector<double> of[kSystems];
};

struct LongBlock {
    std::string scene;
    uint32_t seed;
    double begin_s;
    double microseconds;
};

struct Report {
    std::vector<FigureRow> rows;
    std::vector<LongBlock> longest[kSystems];    // three of each scene
    std::vector<double> microseconds[kSystems];  // all blocks
    std::map<uint32_t, Blocks> with_far_end;     // those of scenes in which the far end speaks, by seed
    Blocks without_far_end;                      // those of the others
};

void add(const Trial& trial, uint32_t seed, const std::vector<Recording>& recordings, Report& report);

// The times of the blocks in which the far end speaks, each seed's. None without such a scene.
std::vector<FigureRow> timesWithFarEnd(const Report& report);

// "engine" or "peer" when the 95 % confidence interval of their difference does not contain 0.
const char* aheadIn(const FigureRow& row);

bool hasTarget(const FigureRow& row);
// The mean counts, of what must be within a bound that of the magnitude. needs: hasTarget.
bool isReached(const FigureRow& row);

// Of a run.
struct RunText {
    EngineText engine;
    TrialOptions options;
    int seeds;
    int passes;
    std::vector<std::string> recorded_talkers;  // empty: the voices are synthetic
};

// Lines, the last one ended.
std::string toText(const Report& report, const RunText& run);
std::string toMarkdown(const Report& report, const RunText& run, const std::string& picture);
nlohmann::ordered_json toJson(const Report& report, const RunText& run);

}  // namespace engine_vs_peer
