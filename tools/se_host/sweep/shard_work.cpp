#include "tools/se_host/sweep/shard_work.h"

#include <filesystem>

#include "tools/se_host/sweep/row.h"

namespace se_host::sweep {

ShardWork::ShardWork(const Folder& folder, size_t number, const std::vector<Task>& tasks,
                     const RunWatch& watch)
    : number_(number), watch_(watch), file_(folder, number) {
    // Another process may have finished it since this one looked.
    const bool is_finished = isFinished(folder, number);
    if (is_finished) std::filesystem::remove(folder.part(number));
    size_t done = 0;
    for (const Task& task : tasks) {
        if (task.shard != number) continue;
        if (is_finished || file_.keys().count(task.key) != 0) {
            ++done;
        } else {
            waiting_.push_back(&task);
        }
    }
    open_ = waiting_.size();
    watch_.done(done);
    if (open_ == 0 && !is_finished) finish();
}

const Task& ShardWork::next() {
    const Task& task = *waiting_.front();
    waiting_.pop_front();
    return task;
}

void ShardWork::add(const Json& row) {
    file_.append(row);
    if (hasFailed(row)) ++failed_;
    watch_.done(1);
    if (--open_ == 0) finish();
}

void ShardWork::finish() {
    file_.finish();
    watch_.after_shard(number_, file_.keys().size(), failed_);
}

}  // namespace se_host::sweep
