// The listeners of one node and the delivery of its changes to them.
// Threads: no lock of its own; used under the node's lock only, listeners included.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>

#include "common/property_node_data.h"

namespace quill {

using PropertyListener = std::function<void(PropertyNode&, const PropertyChangeInfo&)>;

// Every listener sees the changes made while it was listening, each once, in the order of the counter: a
// change made by a listener waits until the one under way has been told to all.
class PropertyListeners {
  public:
    uint64_t add(PropertyListener listener);
    void remove(uint64_t id);
    bool empty() const { return listeners_.empty(); }

    // fails: an exception of a listener passes through; it ends the delivery of this change and of those
    // that waited behind it.
    void deliver(PropertyNode& node, const PropertyChangeInfo& info);

  private:
    struct Change {
        PropertyChangeInfo info;
        uint64_t end_id;  // listeners from here on came after the change
    };
    void tell(PropertyNode& node, const Change& change);

    std::map<uint64_t, std::shared_ptr<const PropertyListener>> listeners_;
    uint64_t next_id_ = 1;
    std::deque<Change> waiting_;
    bool delivering_ = false;
};

}  // namespace quill
