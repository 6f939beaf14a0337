// The engine's values while sound runs, as the audio thread serves them: it takes a few edits before each block, and
// hands some values to the other threads after it.
// Threads: applyEdits and publishSome on the audio thread; post, answer and snapshot on one other thread at a time.
// rt-safe, all of them, as far as the engine is.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "host/live/counter.h"
#include "host/live/engine_value.h"
#include "host/live/ring.h"
#include "host/live/snapshot.h"

namespace se_host {

struct Edit {
    uint32_t place = 0;     // in the list of values
    uint64_t wanted = 0;    // packed, as the number of an edit of its type
    uint64_t expected = 0;  // what the engine was last known to hold
};

class LiveEngine {
  public:
    static constexpr size_t kMostEdits = 1024;
    static constexpr size_t kEditsOfBlock = 4;
    static constexpr size_t kWordsOfBlock = 64;  // and what is left of the value at which they are reached

    // Reads all values once. needs: a started engine, no block in progress.
    explicit LiveEngine(std::vector<EngineValue> values);

    void applyEdits();
    void publishSome();

    // fails: false when kMostEdits are on their way; then nothing happens.
    bool post(const Edit& edit);

    // How many edits can be posted.
    size_t room() const { return kMostEdits - on_their_way_; }

    // The place of the next edit that the audio thread has dealt with; the snapshot holds its value as of then or later.
    // fails: false when there is none.
    bool answer(uint32_t* place);

    const Snapshot& snapshot() const { return snapshot_; }
    uint64_t applied() const { return applied_.get(); }
    uint64_t dropped() const { return dropped_.get(); }

  private:
    // What an edit asked for and what the engine made of it: an edit that was posted before the second was known expects
    // the first.
    struct LastEdit {
        uint64_t wanted = 0;
        uint64_t held = 0;
        bool any = false;
    };

    struct Answer;

    void apply(const Edit& edit);
    bool isApplied(const Edit& edit);
    void publish(size_t place);

    std::vector<EngineValue> values_;
    std::vector<LastEdit> last_edits_;
    std::vector<uint64_t> words_;  // of the largest value
    Snapshot snapshot_;
    size_t next_ = 0;  // to be published
    Ring<Edit, kMostEdits> edits_;
    Ring<uint32_t, kMostEdits> answers_;  // never full: no more edits are on their way than it holds
    size_t on_their_way_ = 0;             // posted and not answered
    Counter applied_;
    Counter dropped_;
};

}  // namespace se_host
