// A listener that records its notifications.
#pragma once

#include <string>
#include <vector>

#include "common/property_node.h"

namespace quill::test {

struct SeenChange {
    int32_t kind;
    std::string name;
    std::string type;
    std::string text;
    uint64_t counter;
    bool operator==(const SeenChange& o) const {
        return kind == o.kind && name == o.name && type == o.type && text == o.text && counter == o.counter;
    }
};

inline std::ostream& operator<<(std::ostream& out, const SeenChange& change) {
    return out << "{" << change.kind << " '" << change.name << "' " << change.type << " '" << change.text
               << "' " << change.counter << "}";
}

// needs: it lives until the last change of the node, or until it is removed.
class ChangeRecorder {
  public:
    explicit ChangeRecorder(PropertyNode& node) {
        id_ = node.addListener([this](PropertyNode&, const PropertyChangeInfo& info) {
            changes_.push_back(
                {info.kind, info.name, info.value.typeName(), info.value.toString(), info.counter});
        });
    }
    ChangeRecorder(const ChangeRecorder&) = delete;
    ChangeRecorder& operator=(const ChangeRecorder&) = delete;

    uint64_t id() const { return id_; }
    const std::vector<SeenChange>& changes() const { return changes_; }
    std::vector<uint64_t> counters() const {
        std::vector<uint64_t> result;
        for (const SeenChange& change : changes_) result.push_back(change.counter);
        return result;
    }

  private:
    std::vector<SeenChange> changes_;
    uint64_t id_;
};

using Changes = std::vector<SeenChange>;
using Counters = std::vector<uint64_t>;

}  // namespace quill::test
