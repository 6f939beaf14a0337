// Makes the plan of a sweep. Rows that are in the folder already are kept, so that a plan with more recordings or tunings
// adds to the results.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "tools/se_host/sweep/plan.h"

namespace se_host::sweep {

// A tuning with the text of its file; empty: the engine as it comes.
struct TuningText {
    std::string name;
    std::string text;
};

struct PlanRequest {
    std::vector<Entry> entries;
    std::vector<TuningText> tunings;
    EngineFile engine;  // the hash is left to the plan
    TimeLimit time_limit;
    double shard_seconds = 7200;
    bool over_time = false;
    bool retry_failed = false;                                // rows of tasks that failed are not kept
    std::function<void(size_t recording)> after_recording{};  // has been read
};

// fails: Failure, also while the folder's earlier plan is being run, and when the folder holds something else.
Plan makePlan(const Folder& folder, PlanRequest request);

}  // namespace se_host::sweep
