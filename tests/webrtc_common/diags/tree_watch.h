// A listener on every node of a tree. It counts the notifications.
#pragma once

#include "common/property_node.h"

namespace quill::test {

// needs: outlives the changes; nodes made later are not watched.
class TreeWatch {
  public:
    explicit TreeWatch(const PropertyNodePtr& root) { watch(root); }
    TreeWatch(const TreeWatch&) = delete;
    TreeWatch& operator=(const TreeWatch&) = delete;

    int changes() const { return changes_; }

  private:
    void watch(const PropertyNodePtr& node) {
        node->addListener([this](PropertyNode&, const PropertyChangeInfo&) { ++changes_; });
        for (const PropertyNodePtr& child : node->children()) watch(child);
    }

    int changes_ = 0;
};

}  // namespace quill::test
