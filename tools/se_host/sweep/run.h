// Runs tasks of a plan on this machine, each in a process of its own.
// Threads: one.
#pragma once

#include <functional>
#include <vector>

#include "tools/se_host/sweep/plan.h"

namespace se_host::sweep {

struct RunWatch {
    std::function<void(size_t tasks)> begin;  // of the shards that are not finished
    std::function<void(size_t tasks)> done;   // more of them, with a row
    // A shard is finished.
    std::function<void(size_t shard, size_t rows, size_t failed)> after_shard;
};

// As many as processors that this process may use.
size_t usualJobs();

// `shards`: their numbers; finished ones are left out. `jobs`: processes at a time. Rows that are there from a run that
// was ended are taken over. fails: Failure when another process works on a shard, or a row cannot be written.
void runShards(const Folder& folder, const std::vector<size_t>& shards, size_t jobs, const RunWatch& watch);

// The shards of the plan that are not finished.
std::vector<size_t> unfinishedShards(const Folder& folder, const Plan& plan);

}  // namespace se_host::sweep
