// The tree: names, children, lookup, listeners. The accessors of values are in property_access.cpp.
#include "common/property_node.h"

#include <algorithm>
#include <utility>

namespace quill {
namespace {

std::string pathOfChild(const std::string& parent, std::string_view name) {
    std::string path;
    path.reserve(parent.size() + 1 + name.size());
    if (!parent.empty()) path.append(parent).append("/");
    return path.append(name);
}

}  // namespace

PropertyNode::PropertyNode(std::string full_name, std::string_view name)
    : full_name_(std::move(full_name)), name_(name) {}

PropertyNodePtr PropertyNode::createRoot() {
    return PropertyNodePtr(new PropertyNode({}, {}));
}

// Branches are destroyed in a loop, because recursion over a path of many components would exhaust the stack:
// the children of a node that is destroyed in the loop are added to it. They are linked to one another, for a
// destructor must not need memory. A child that somebody else holds only loses this owner.
PropertyNode::~PropertyNode() {
    thread_local PropertyNodePtr* in_progress = nullptr;
    PropertyNodePtr first;
    PropertyNodePtr& pending = in_progress == nullptr ? first : *in_progress;
    for (PropertyNodePtr& child : children_.release()) {
        if (child.use_count() != 1) continue;
        child->next_destroyed_ = std::move(pending);
        pending = std::move(child);
    }
    if (in_progress != nullptr) return;
    in_progress = &first;
    while (first != nullptr) {
        const PropertyNodePtr node = std::move(first);
        first = std::move(node->next_destroyed_);
    }
    in_progress = nullptr;
}

const std::string& PropertyNode::name() const {
    return name_;
}

std::string PropertyNode::getFullName() const {
    return full_name_;
}

std::vector<PropertyNodePtr> PropertyNode::children() const {
    std::vector<PropertyNodePtr> result = children_.list();
    std::sort(result.begin(), result.end(),
              [](const PropertyNodePtr& a, const PropertyNodePtr& b) { return a->name_ < b->name_; });
    return result;
}

PropertyNodePtr PropertyNode::getNode(const std::string& path, bool create) {
    PropertyNode* const node = find(path, create);
    return node == nullptr ? nullptr : node->shared_from_this();
}

bool PropertyNode::exists(const std::string& path) {
    return find(path, false) != nullptr;
}

// Plain pointers are sufficient during the search: nodes are never removed from a tree that is held.
PropertyNode* PropertyNode::find(std::string_view path, bool create) {
    PropertyNode* node = this;
    while (node != nullptr && !path.empty()) {
        const std::string_view name = path.substr(0, path.find('/'));
        path.remove_prefix(std::min(name.size() + 1, path.size()));
        if (name.empty()) continue;
        PropertyNode* const child = node->children_.find(name);
        node = child == nullptr && create ? node->makeChild(name) : child;
    }
    return node;
}

PropertyNode* PropertyNode::makeChild(std::string_view name) {
    return children_.add(PropertyNodePtr(new PropertyNode(pathOfChild(full_name_, name), name)));
}

uint64_t PropertyNode::addListener(PropertyListener listener) {
    return listeners_.add(std::move(listener));
}

void PropertyNode::removeListener(uint64_t id) {
    listeners_.remove(id);
}

void PropertyNode::fireChangedOnData(PropertyNodeData::SharedDataLock& lock, const PropertyChangeInfo& info) {
    if (listeners_.empty()) return;
    lock.keep_alive_ = weak_from_this().lock();  // null while the node is being destroyed
    listeners_.deliver(*this, info);
}

}  // namespace quill
