// The children of one node by name. A child is never removed, so that finding one takes no lock.
// Threads: any, until they are given up.
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

    // The child that has this one's name from now on: this one, or the one that was there before.
    PropertyNode* add(const PropertyNodePtr& child);

    // All of them, in the order in which they came.
    std::vector<PropertyNodePtr> list() const;

    // Hands the ownership over; there are no children from then on. needs: no other thread uses this any more.
    void giveUp(std::vector<PropertyNodePtr>& to);

  private:
    struct Table;
    void makeRoom();

    std::atomic<Table*> table_{nullptr};          // the newest of tables_; null until the first child
    mutable std::mutex mutex_;                    // of what follows, for single steps
    std::vector<std::unique_ptr<Table>> tables_;  // outgrown ones stay: somebody may be looking there
    std::vector<PropertyNodePtr> owned_;
};

}  // namespace quill
