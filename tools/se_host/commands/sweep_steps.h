// The steps of `se_host sweep`, for their own commands and for the one that does them all.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

#include "tools/se_host/commands/engine_options.h"
#include "tools/se_host/sweep/found_recordings.h"
#include "tools/se_host/sweep/planning.h"

namespace se_host {

inline constexpr const char* kSweepFolder = "sweep";  // unless the user names one

struct SweepPlanOptions {
    std::string recordings;  // a manifest, or a folder of recordings
    sweep::FarEndChoice far_end;
    std::string folder = kSweepFolder;
    std::vector<std::string> tunings;
    std::vector<std::string> grid;
    bool no_default = false;
    EngineChoice engine;
    sweep::TimeLimit time_limit;
    double shard_seconds = sweep::PlanRequest().shard_seconds;
    bool over_time = false;
    bool retry_failed = false;
    bool quiet = false;
};

struct SweepRunOptions {
    std::string folder = kSweepFolder;
    std::vector<size_t> shards;  // empty: all
    size_t jobs = 0;             // 0: as many as processors
    std::string backend;         // empty: in this process
    bool quiet = false;
};

struct SweepMergeOptions {
    std::string folder = kSweepFolder;
    bool partial = false;
    bool quiet = false;
};

void addFarEndChoice(CLI::App& command, sweep::FarEndChoice& far_end);
void addSweepPlanOptions(CLI::App& command, SweepPlanOptions& options);
void addSweepFolder(CLI::App& command, std::string& folder);
void addSweepJobs(CLI::App& command, size_t& jobs);

// Does not return in the parent of the process that has the engine, as superviseEngine.
void planSweep(const SweepPlanOptions& options);
void runSweep(const SweepRunOptions& options);
void mergeSweep(const SweepMergeOptions& options);

}  // namespace se_host
