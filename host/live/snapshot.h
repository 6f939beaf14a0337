// The latest values of a list, written by one thread and read by others, whole.
//
// Each value has two copies. The writer fills the one that is not current and then makes it current by counting its
// version, so a reader copies the current one and looks whether the version is still the same. It begins
// again if not; the writer comes back to a value only after all others, so this ends at once.
// Threads: put on one thread, get on any. rt-safe, both: neither waits for the other.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace se_host {

class Snapshot {
  public:
    // in: words of each value. All are 0, version 0.
    explicit Snapshot(const std::vector<size_t>& sizes);

    size_t size() const { return slots_.size(); }

    void put(size_t place, const uint64_t* words);

    // out: the value. result: its version, which counts the calls of put.
    uint64_t get(size_t place, std::vector<uint64_t>& words) const;

    uint64_t version(size_t place) const { return slots_[place].version.load(std::memory_order_acquire); }

  private:
    struct Slot {
        std::atomic<uint64_t> version{0};
        size_t first = 0;  // of the words of its two copies
        size_t words = 0;
    };

    std::vector<Slot> slots_;
    // Stored with release and loaded with acquire: a reader that meets a word of a later version sees that
    // the version has changed.
    std::vector<std::atomic<uint64_t>> words_;
};

}  // namespace se_host
