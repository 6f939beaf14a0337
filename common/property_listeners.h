// The listeners of one node and the delivery of its changes to them. The list has a lock of its own, which no
// thread holds while a listener runs. The delivery is under the node's lock: one listener runs at a time.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>

namespace quill {

class PropertyNode;
struct PropertyChangeInfo;

using PropertyListener = std::function<void(PropertyNode&, const PropertyChangeInfo&)>;

// Every listener sees the changes made while it is in the list, each once, in the order of the counter: a
// change made by a listener waits until the change in progress has been told to all.
class PropertyListeners {
  public:
    PropertyListeners() = default;
    ~PropertyListeners();
    PropertyListeners(const PropertyListeners&) = delete;
    PropertyListeners& operator=(const PropertyListeners&) = delete;

    // Returns the listener's number; 0 when the function is empty. Waits for no listener.
    uint64_t add(PropertyListener listener);

    // Waits for a call of this listener on another thread. The listener is destroyed last: what it captured
    // may use the list, or own the node that owns the list.
    void remove(uint64_t id);

    bool empty() const;

    // needs: the node's lock. fails: an exception of a listener passes through; it ends the delivery of this
    // change and of those that wait behind it.
    void deliver(PropertyNode& node, const PropertyChangeInfo& info);

  private:
    struct List;
    List& list();

    std::atomic<List*> list_{nullptr};  // null until the first listener is added
};

}  // namespace quill
