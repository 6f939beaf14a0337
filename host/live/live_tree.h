// The property tree of an engine whose sound runs: values of the engine go to the nodes and edits of the nodes to the
// engine with the meaning of the two passes over the diagnostics, but through the audio thread.
//
// An edit counts as exchanged as soon as it is posted: its value becomes the node's mark. Until the audio thread has dealt
// with it nothing is published to the node. What the engine made of it then differs from the mark or not, as after an
// apply pass.
// Threads: one at a time, not the audio thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "host/diags/diag_tree.h"
#include "host/live/live_engine.h"

namespace se_host {

class LiveTree {
  public:
    // needs: a started engine, no block in progress; `tree` as published last, and outlives this.
    explicit LiveTree(DiagTree& tree);

    // For the audio thread.
    LiveEngine& engine() { return engine_; }

    enum class Posted { kYes, kUnchanged, kFull };

    // needs: a text to which the tree has no objection, name or path.
    Posted set(const std::string& name, const std::string& text);

    size_t room() const { return engine_.room(); }

    // Brings a node, or all, up to date.
    void update(const std::string& name);
    void updateAll();

  private:
    struct Entry {
        EngineValue value;
        quill::PropertyNodePtr node;
        uint64_t version = 0;       // published to the node
        uint32_t on_their_way = 0;  // edits
    };

    static std::vector<Entry> entriesOf(const DiagTree& tree);
    static std::vector<EngineValue> valuesOf(const std::vector<Entry>& entries);

    void takeAnswers();
    void publish(size_t place);
    void publishWords(Entry& entry);

    DiagTree& tree_;
    std::vector<Entry> entries_;
    std::unordered_map<std::string, size_t> places_;  // of entries, by name and path
    LiveEngine engine_;
    std::vector<uint64_t> words_;
};

}  // namespace se_host
