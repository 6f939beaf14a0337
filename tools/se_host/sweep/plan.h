// The plan of a sweep: the tasks, every recording with every tuning, divided into shards.
#pragma once

#include <string>
#include <vector>

#include "tools/se_host/sweep/folder.h"
#include "tools/se_host/sweep/manifest.h"
#include "tools/se_host/sweep/order.h"
#include "tools/se_host/sweep/program.h"

namespace se_host::sweep {

struct TuningChoice {
    std::string name;
    std::string file;  // below the sweep's folder; empty: the engine as it comes
    std::string hash;
};

// Seconds that a task may take.
struct TimeLimit {
    double base = 60;
    double per_second = 5;  // of the recording
};

struct Plan {
    EngineFile engine;
    Program program;
    std::vector<TuningChoice> tunings;
    TimeLimit time_limit;
    double shard_seconds = 0;  // of sound
    bool over_time = false;
    size_t tasks = 0;
    size_t kept = 0;  // of them, whose rows are there from an earlier plan
    size_t shards = 0;
};

struct Task {
    std::string key;
    size_t shard = 0;  // from 1; 0: its row is kept
    std::string recording;
    std::string tuning;
    double seconds = 0;  // of the recording; 0: not known
};

Json toJson(const Plan& plan);
Json toJson(const Task& task);

// fails: Failure when there is none, or another version of the program made it.
Plan readPlan(const Folder& folder);
std::vector<Task> readTasks(const Folder& folder);

// Orders of the tasks of a plan.
class Orders {
  public:
    // fails: Failure when the engine or the program is another one than the plan's.
    Orders(const Folder& folder, const Plan& plan);

    Order of(const Task& task) const;

  private:
    Folder folder_;
    Plan plan_;
    std::vector<Entry> entries_;  // by id
};

}  // namespace se_host::sweep
