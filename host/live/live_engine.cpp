#include "host/live/live_engine.h"

#include <algorithm>
#include <utility>

namespace se_host {
namespace {

std::vector<size_t> sizesOf(const std::vector<EngineValue>& values) {
    std::vector<size_t> sizes;
    for (const EngineValue& value : values) sizes.push_back(wordsOf(value));
    return sizes;
}

size_t largestOf(const std::vector<size_t>& sizes) {
    return sizes.empty() ? 0 : *std::max_element(sizes.begin(), sizes.end());
}

}  // namespace

LiveEngine::LiveEngine(std::vector<EngineValue> values)
    : values_(std::move(values)),
      last_edits_(values_.size()),
      words_(largestOf(sizesOf(values_))),
      snapshot_(sizesOf(values_)) {
    for (size_t place = 0; place < values_.size(); ++place) publish(place);
}

void LiveEngine::applyEdits() {
    Edit edit;
    for (size_t i = 0; i < kEditsOfBlock && edits_.pop(&edit); ++i) apply(edit);
}

// Counts an edit and answers its poster, also when the engine threw. The snapshot comes before the answer.
struct LiveEngine::Answer {
    ~Answer() {
        (applied ? engine.applied_ : engine.dropped_).add();
        engine.answers_.push(place);
    }

    LiveEngine& engine;
    uint32_t place;
    bool applied = false;
};

void LiveEngine::apply(const Edit& edit) {
    Answer answer{*this, edit.place};
    try {
        answer.applied = isApplied(edit);
    } catch (...) {
        publish(edit.place);
        throw;
    }
    publish(edit.place);
}

bool LiveEngine::isApplied(const Edit& edit) {
    const EngineValue& value = values_[edit.place];
    LastEdit& last = last_edits_[edit.place];
    EditResult result = editEngine(value, edit.wanted, edit.expected);
    if (result == EditResult::kDropped && last.any && edit.expected == last.wanted) {
        result = editEngine(value, edit.wanted, last.held);
    }
    if (result == EditResult::kDropped) return false;
    last = {edit.wanted, editableInEngine(value), true};
    return true;
}

void LiveEngine::publishSome() {
    size_t words = 0;
    for (size_t i = 0; i < values_.size() && words < kWordsOfBlock; ++i) {
        publish(next_);
        words += wordsOf(values_[next_]);
        next_ = (next_ + 1) % values_.size();
    }
}

void LiveEngine::publish(size_t place) {
    readEngine(values_[place], words_.data());
    snapshot_.put(place, words_.data());
}

bool LiveEngine::post(const Edit& edit) {
    if (room() == 0) return false;
    ++on_their_way_;
    return edits_.push(edit);
}

bool LiveEngine::answer(uint32_t* place) {
    if (!answers_.pop(place)) return false;
    --on_their_way_;
    return true;
}

}  // namespace se_host
