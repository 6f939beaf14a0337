#include "host/live/snapshot.h"

#include <numeric>

namespace se_host {

Snapshot::Snapshot(const std::vector<size_t>& sizes)
    : slots_(sizes.size()), words_(2 * std::accumulate(sizes.begin(), sizes.end(), size_t{0})) {
    size_t first = 0;
    for (size_t place = 0; place < sizes.size(); ++place) {
        slots_[place].first = first;
        slots_[place].words = sizes[place];
        first += 2 * sizes[place];
    }
}

void Snapshot::put(size_t place, const uint64_t* words) {
    Slot& slot = slots_[place];
    const uint64_t next = slot.version.load(std::memory_order_relaxed) + 1;
    std::atomic<uint64_t>* const copy = words_.data() + slot.first + (next % 2) * slot.words;
    for (size_t i = 0; i < slot.words; ++i) copy[i].store(words[i], std::memory_order_release);
    slot.version.store(next, std::memory_order_release);
}

uint64_t Snapshot::get(size_t place, std::vector<uint64_t>& words) const {
    const Slot& slot = slots_[place];
    words.resize(slot.words);
    for (;;) {
        const uint64_t before = version(place);
        const std::atomic<uint64_t>* const copy = words_.data() + slot.first + (before % 2) * slot.words;
        for (size_t i = 0; i < slot.words; ++i) words[i] = copy[i].load(std::memory_order_acquire);
        if (version(place) == before) return before;
    }
}

}  // namespace se_host
