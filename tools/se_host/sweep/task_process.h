// The process of one task, seen from its parent: whatever happens in it, there is a row.
// Threads: one.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <optional>

#include "host/output/descriptor.h"
#include "tools/se_host/sweep/order.h"

namespace se_host::sweep {

class TaskProcess {
  public:
    using Clock = std::chrono::steady_clock;

    // Starts it: `se_host sweep task`, the order as its standard input. It ends with this process.
    // needs: SIGCHLD blocked. fails: Failure.
    TaskProcess(Order order, double seconds);
    TaskProcess(TaskProcess&& other) noexcept;
    TaskProcess& operator=(TaskProcess&& other) noexcept;
    // Ends it.
    ~TaskProcess();

    Clock::time_point deadline() const { return deadline_; }

    // Looks whether the process has ended, and ends one that is beyond its time. result: the row, once.
    std::optional<Json> row();

  private:
    Json rowAfter(int wait_status) const;

    Order order_;
    double seconds_;
    Clock::time_point deadline_;
    bool is_late_ = false;
    se_output::Descriptor answer_;  // its standard output and error
    se_output::Descriptor messages_;
    pid_t process_ = 0;  // 0: it has ended
};

}  // namespace se_host::sweep
