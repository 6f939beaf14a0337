#include "tools/se_host/sweep/run.h"

#include <sched.h>
#include <signal.h>

#include <algorithm>
#include <deque>
#include <list>
#include <memory>

#include "tools/se_host/sweep/shard_work.h"
#include "tools/se_host/sweep/task_process.h"

namespace se_host::sweep {
namespace {

using Clock = TaskProcess::Clock;

struct Running {
    TaskProcess process;
    std::shared_ptr<ShardWork> work;
};

class Run {
  public:
    Run(const Folder& folder, const std::vector<size_t>& shards, size_t jobs, const RunWatch& watch);

    void toItsEnd() {
        while (startSome() || !running_.empty()) waitForSome();
    }

  private:
    bool startSome();
    std::shared_ptr<ShardWork> workWithATask();
    void waitForSome();
    bool takeRows();

    Folder folder_;
    Plan plan_;
    std::vector<Task> tasks_;
    Orders orders_;
    std::deque<size_t> shards_;  // not opened yet
    std::shared_ptr<ShardWork> current_;
    std::list<Running> running_;
    size_t jobs_;
    const RunWatch& watch_;
    sigset_t child_ended_;
};

Run::Run(const Folder& folder, const std::vector<size_t>& shards, size_t jobs, const RunWatch& watch)
    : folder_(folder),
      plan_(readPlan(folder)),
      tasks_(readTasks(folder)),
      orders_(folder, plan_),
      jobs_(jobs),
      watch_(watch) {
    std::copy_if(shards.begin(), shards.end(), std::back_inserter(shards_),
                 [&](size_t shard) { return !isFinished(folder, shard); });
    const auto is_ours = [&](const Task& task) {
        return std::find(shards_.begin(), shards_.end(), task.shard) != shards_.end();
    };
    watch_.begin(static_cast<size_t>(std::count_if(tasks_.begin(), tasks_.end(), is_ours)));
    ::signal(SIGCHLD, SIG_DFL);
    ::sigemptyset(&child_ended_);
    ::sigaddset(&child_ended_, SIGCHLD);
    ::sigprocmask(SIG_BLOCK, &child_ended_, nullptr);
}

// Null when no task is left to be started.
std::shared_ptr<ShardWork> Run::workWithATask() {
    while (!current_ || !current_->isWaiting()) {
        if (shards_.empty()) return nullptr;
        current_ = std::make_shared<ShardWork>(folder_, shards_.front(), tasks_, watch_);
        shards_.pop_front();
    }
    return current_;
}

bool Run::startSome() {
    bool started = false;
    while (running_.size() < jobs_) {
        const std::shared_ptr<ShardWork> work = workWithATask();
        if (!work) break;
        const Task& task = work->next();
        const TimeLimit& limit = plan_.time_limit;
        running_.push_back(
            {TaskProcess(orders_.of(task), limit.base + limit.per_second * task.seconds), work});
        started = true;
    }
    return started;
}

// Until a process has ended, or is beyond its time.
void Run::waitForSome() {
    while (!takeRows()) {
        auto until = Clock::time_point::max();
        for (const Running& one : running_) until = std::min(until, one.process.deadline());
        const auto left = std::max(until - Clock::now(), Clock::duration(std::chrono::milliseconds(10)));
        const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(left);
        const auto rest = std::chrono::duration_cast<std::chrono::nanoseconds>(left - seconds);
        const timespec time{seconds.count(), rest.count()};
        ::sigtimedwait(&child_ended_, nullptr, &time);
    }
}

bool Run::takeRows() {
    const size_t before = running_.size();
    for (auto one = running_.begin(); one != running_.end();) {
        const std::optional<Json> row = one->process.row();
        if (!row) {
            ++one;
            continue;
        }
        one->work->add(*row);
        one = running_.erase(one);
    }
    return running_.size() < before;
}

}  // namespace

size_t usualJobs() {
    cpu_set_t processors;
    CPU_ZERO(&processors);
    if (::sched_getaffinity(0, sizeof processors, &processors) != 0) return 1;
    return static_cast<size_t>(std::max(CPU_COUNT(&processors), 1));
}

void runShards(const Folder& folder, const std::vector<size_t>& shards, size_t jobs, const RunWatch& watch) {
    Run(folder, shards, jobs, watch).toItsEnd();
}

std::vector<size_t> unfinishedShards(const Folder& folder, const Plan& plan) {
    std::vector<size_t> numbers;
    for (size_t number = 1; number <= plan.shards; ++number) {
        if (!isFinished(folder, number)) numbers.push_back(number);
    }
    return numbers;
}

}  // namespace se_host::sweep
