#include "tools/se_host/sweep/run.h"

#include <sched.h>
#include <signal.h>

#include <algorithm>
#include <deque>
#include <filesystem>
#include <list>
#include <memory>

#include "tools/se_host/sweep/row.h"
#include "tools/se_host/sweep/shard.h"
#include "tools/se_host/sweep/task_process.h"

namespace se_host::sweep {
namespace {

using Clock = TaskProcess::Clock;

// A shard in work.
struct Work {
    size_t number;
    std::unique_ptr<Shard> file;
    std::deque<const Task*> waiting;
    size_t open = 0;  // tasks without a row
    size_t failed = 0;
};

struct Running {
    TaskProcess process;
    std::shared_ptr<Work> work;
};

class Run {
  public:
    Run(const Folder& folder, const std::vector<size_t>& shards, size_t jobs, const RunWatch& watch);

    void toItsEnd() {
        while (startSome() || !running_.empty()) waitForSome();
    }

  private:
    bool startSome();
    std::shared_ptr<Work> workWithATask();
    std::shared_ptr<Work> open(size_t shard);
    void finish(Work& work);
    void waitForSome();
    bool takeRows();

    Folder folder_;
    Plan plan_;
    std::vector<Task> tasks_;
    Orders orders_;
    std::deque<size_t> shards_;  // not opened yet
    std::shared_ptr<Work> current_;
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

std::shared_ptr<Work> Run::open(size_t shard) {
    auto work = std::make_shared<Work>();
    work->number = shard;
    work->file = std::make_unique<Shard>(folder_, shard);
    // Another process may have finished it since the start.
    const bool is_finished = isFinished(folder_, shard);
    if (is_finished) std::filesystem::remove(folder_.part(shard));
    size_t tasks = 0;
    for (const Task& task : tasks_) {
        if (task.shard != shard) continue;
        ++tasks;
        if (!is_finished && work->file->keys().count(task.key) == 0) work->waiting.push_back(&task);
    }
    work->open = work->waiting.size();
    watch_.done(tasks - work->open);
    if (work->open == 0 && !is_finished) finish(*work);
    return work;
}

void Run::finish(Work& work) {
    work.file->finish();
    watch_.after_shard(work.number, work.file->keys().size(), work.failed);
}

// Null when no task is left to be started.
std::shared_ptr<Work> Run::workWithATask() {
    while (!current_ || current_->waiting.empty()) {
        if (shards_.empty()) return nullptr;
        current_ = open(shards_.front());
        shards_.pop_front();
    }
    return current_;
}

bool Run::startSome() {
    bool started = false;
    while (running_.size() < jobs_) {
        const std::shared_ptr<Work> work = workWithATask();
        if (!work) break;
        const Task& task = *work->waiting.front();
        work->waiting.pop_front();
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
        Work& work = *one->work;
        work.file->append(*row);
        if (hasFailed(*row)) ++work.failed;
        watch_.done(1);
        if (--work.open == 0) finish(work);
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
