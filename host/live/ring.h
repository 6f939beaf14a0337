// A bounded queue from one thread to another.
// Threads: push on one thread, pop on one thread. rt-safe, both: neither waits.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>

namespace se_host {

template <class Item, size_t capacity>
class Ring {
    static_assert((capacity & (capacity - 1)) == 0, "a power of two, so that the positions may wrap around");

  public:
    // fails: false when it is full; then nothing is changed.
    bool push(const Item& item) {
        const size_t end = end_.load(std::memory_order_relaxed);
        if (end - begin_.load(std::memory_order_acquire) == capacity) return false;
        items_[end % capacity] = item;
        end_.store(end + 1, std::memory_order_release);
        return true;
    }

    // fails: false when it is empty; then *item is untouched.
    bool pop(Item* item) {
        const size_t begin = begin_.load(std::memory_order_relaxed);
        if (begin == end_.load(std::memory_order_acquire)) return false;
        *item = items_[begin % capacity];
        begin_.store(begin + 1, std::memory_order_release);
        return true;
    }

  private:
    std::array<Item, capacity> items_{};
    alignas(64) std::atomic<size_t> begin_{0};  // written by the thread that pops
    alignas(64) std::atomic<size_t> end_{0};    // written by the thread that pushes
};

}  // namespace se_host
