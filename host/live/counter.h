// A number that one thread counts and others read.
// Threads: add on one thread, get on any. rt-safe.
#pragma once

#include <atomic>
#include <cstdint>

namespace se_host {

class Counter {
  public:
    void add(uint64_t count = 1) { value_.store(get() + count, std::memory_order_relaxed); }
    uint64_t get() const { return value_.load(std::memory_order_relaxed); }

  private:
    std::atomic<uint64_t> value_{0};
};

}  // namespace se_host
