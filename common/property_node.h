// A node of the host's property tree: a name, a value with metadata, children, listeners.
//
// Threads: every function may be called from any thread; none is rt-safe. A node's accessors hold its lock
// for their whole run, so that each is atomic; the thread that has the lock may take it again. Finding and
// creating nodes takes none of these locks and never waits for a listener; finding takes no lock at all.
//
// Listeners run on the thread that made the change, with the node's lock held. Two rules keep threads from
// waiting for each other:
// - A listener uses its own node and nodes whose full name comes later in byte order (its descendants among
//   them), never an earlier one. Code that holds a SharedDataLock keeps to the same order.
// - Code that holds a lock which a listener of a node takes does not call that node.
// The accessors raise their soft assertions under the lock too, so both rules hold for assertion handlers and
// log sinks as for listeners.
//
// The list of listeners has a lock of its own, which no thread holds while a listener runs. Adding a listener
// waits for no listener. Removing one waits only for a call of that very listener on another thread, so the
// two rules concern removal as well.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "common/export.h"
#include "common/property_children.h"
#include "common/property_listeners.h"
#include "common/property_node_data.h"
#include "common/property_value.h"

namespace quill {

// T is one of the five value types throughout; any other is an undefined reference when linking.
class QUILL_COMMON_EXPORT PropertyNode : public std::enable_shared_from_this<PropertyNode> {
  public:
    static PropertyNodePtr createRoot();
    ~PropertyNode();
    PropertyNode(const PropertyNode&) = delete;
    PropertyNode& operator=(const PropertyNode&) = delete;

    // --- The tree. Nodes are never removed: a node lives as long as its parent, or longer while a pointer to
    // it is held.

    // [any] The last component of the path; the root's is empty.
    const std::string& name() const;

    // [any] The path from the root, "diags/basic/x"; the root's is empty.
    std::string getFullName() const;

    // [any] The children in name order (bytes).
    std::vector<PropertyNodePtr> children() const;

    // [any] The node at `path` below this one. Components are separated by "/", empty ones are skipped: "" is
    // this node. Made with its missing ancestors when `create` is true. Finding allocates nothing.
    // fails: null when absent and not to be created.
    PropertyNodePtr getNode(const std::string& path, bool create);

    // [any] Whether there is a node at `path`. Allocates nothing.
    bool exists(const std::string& path);

    // --- The value. A new node has none.

    // [any] The value as a T, converted through text if it is of another type. fails: soft assertion; a node
    // without a value gives T{}, a text that T cannot take what its extraction left.
    template <class T>
    T get();

    // [any] out: the value as a T; a node without a value receives the default first, which is a change.
    template <class T>
    void get(T& out, T defaultValue);

    // [any] Sets value and type; "read_only" does not matter. Returns 0 when the node holds this value of
    // this type already, else the change counter once the listeners have been told.
    template <class T>
    unsigned long set(T value);

    // [any] A copy of the value, empty when there is none.
    PropertyValue value();

    // [any] Keeps the default, and makes it the value of a node that has none, which is a change.
    void setDefaultValue(const PropertyValue& value);
    PropertyValue defaultValue();

    // [any] Sets the value from a text that a user typed: in the node's present type, as a string if the node
    // has no value. fails: false with a sentence in `error` (which may be null), nothing changed, when the
    // node's "read_only" is true, read as getMeta<bool> reads it, or when the type cannot hold the whole
    // text, surrounding blanks aside.
    bool setFromText(const std::string& text, std::string* error);

    // --- Metadata: named values beside the value. They share the change counter.

    // [any] As set<T>, for one entry.
    template <class T>
    unsigned long setMeta(const std::string& name, T value);

    // [any] fails: false, `out` untouched, when there is no such entry. Kept on purpose: asking leaves an
    // empty entry of that name behind, which hasMeta does not count.
    template <class T>
    bool getMeta(const std::string& name, T& out);

    // [any] As getMeta, but leaves nothing behind: hasMeta and getMeta in one.
    template <class T>
    bool findMeta(const std::string& name, T& out);

    // [any] Whether the entry exists and is not empty.
    bool hasMeta(const std::string& name);

    // --- Listeners

    // [any] Calls the listener for every later change, in the order of the counter; a change that is being
    // told is not a later one. Waits for no listener. Returns the listener's number, never 0. A value that is
    // read after this has returned is at least as new as the last change that the listener was not told of.
    // fails: 0, nothing added, when the function is empty.
    uint64_t addListener(PropertyListener listener);

    // [any] Once this has returned the listener is not called again, and what it captured is destroyed. Waits
    // for a call of this listener on another thread, for no other listener. A listener may remove itself: its
    // call finishes normally, and what it captured is destroyed after the call. If several threads remove it
    // together, what it captured is destroyed when the last of them returns. 0 and unknown numbers are ignored.
    void removeListener(uint64_t id);

    // [any] Tells the listeners of a change that was made under `lock`. While a change of this node is being
    // told, the new one waits for its turn. If a listener drops the last reference to the node, the node is
    // destroyed with `lock`.
    void fireChangedOnData(PropertyNodeData::SharedDataLock& lock, const PropertyChangeInfo& info);

  private:
    friend class PropertyNodeData::SharedDataLock;
    using Lock = PropertyNodeData::SharedDataLock;

    PropertyNode(std::shared_ptr<const std::string> path, size_t length, std::string_view name);
    PropertyNode* find(std::string_view path, bool create);
    PropertyNode* makeBranch(std::string_view path);
    void countChange(Lock& lock, int32_t kind, const std::string& name, const PropertyValue& value);

    // The full name is the beginning of a text that nodes which were made together share: one each would take memory
    // that grows with the square of the length of a path.
    const std::shared_ptr<const std::string> path_;
    const size_t full_name_length_;
    const std::string name_;
    PropertyChildren children_;
    PropertyNodeData data_;
    PropertyListeners listeners_;
    PropertyNodePtr next_destroyed_;  // while a branch is destroyed
};

}  // namespace quill
