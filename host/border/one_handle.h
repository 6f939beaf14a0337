// One handle a process, from the beginning of its opening on.
#pragma once

#include <mutex>

namespace se_host {

class OneHandle {
  public:
    OneHandle() {
        const std::lock_guard lock(mutex_);
        taken_ = !is_open_;
        is_open_ = true;
    }
    ~OneHandle() {
        if (taken_) release();
    }
    OneHandle(const OneHandle&) = delete;
    OneHandle& operator=(const OneHandle&) = delete;

    bool taken() const { return taken_; }
    void keep() { taken_ = false; }

    static void release() {
        const std::lock_guard lock(mutex_);
        is_open_ = false;
    }

  private:
    static inline std::mutex mutex_;
    static inline bool is_open_ = false;

    bool taken_;
};

}  // namespace se_host
