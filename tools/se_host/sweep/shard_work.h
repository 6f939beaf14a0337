// A shard in work: the tasks that wait, and the file that their rows go to.
#pragma once

#include <deque>
#include <vector>

#include "tools/se_host/sweep/plan.h"
#include "tools/se_host/sweep/run.h"
#include "tools/se_host/sweep/shard.h"

namespace se_host::sweep {

class ShardWork {
  public:
    // Takes over the rows that are there. `tasks` and `watch` have to stay. fails: Failure as Shard.
    ShardWork(const Folder& folder, size_t number, const std::vector<Task>& tasks, const RunWatch& watch);

    bool isWaiting() const { return !waiting_.empty(); }
    // needs: isWaiting.
    const Task& next();
    // The row of a task that next() gave. The last one finishes the shard.
    void add(const Json& row);

  private:
    void finish();

    size_t number_;
    const RunWatch& watch_;
    Shard file_;
    std::deque<const Task*> waiting_;
    size_t open_ = 0;  // tasks without a row
    size_t failed_ = 0;
};

}  // namespace se_host::sweep
