// The children of one node by name. A child is never removed, so that finding one takes no lock.
#pragma once

#include <atomic>
#include <memory>
#include <mutex>
#include <string_view>
#include <vector>

namespace quill {

class PropertyNode;
using PropertyNodePtr = std::shared_ptr<PropertyNode>;

class PropertyChildren {
  public:
    PropertyChildren();
    ~PropertyChildren();
    PropertyChildren(const PropertyChildren&) = delete;
    PropertyChildren& operator=(const PropertyChildren&) = delete;

    // The child of that name, null when there is none. No lock, no allocation.
    PropertyNode* find(std::string_view name) const;

    // The child of this name afterwards: the given one, or one that was added before.
    PropertyNode* add(const PropertyNodePtr& child);

    // All of them, in the order of adding.
    std::vector<PropertyNodePtr> list() const;

    // Takes the children out; there are none afterwards. Allocates nothing. needs: no other thread uses this.
    std::vector<PropertyNodePtr> release();

  private:
    struct Table;
    void makeRoom();

    std::atomic<Table*> table_{nullptr};          // the newest of tables_; null until the first child
    mutable std::mutex mutex_;                    // of the next two
    std::vector<std::unique_ptr<Table>> tables_;  // smaller ones stay: a thread may be searching there
    std::vector<PropertyNodePtr> owned_;
};

}  // namespace quill
