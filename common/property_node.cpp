// The tree: names, children, lookup, listeners. The accessors of values are in property_access.cpp.
#include "common/property_node.h"

#include <algorithm>
#include <utility>

namespace quill {
namespace {

// The first component of a path, which is removed from it; empty components are skipped. Empty: there is none.
std::string_view takeComponent(std::string_view& path) {
    path.remove_prefix(std::min(path.find_first_not_of('/'), path.size()));
    const std::string_view name = path.substr(0, path.find('/'));
    path.remove_prefix(name.size());
    return name;
}

void appendComponent(std::string& path, std::string_view name) {
    if (!path.empty()) path += '/';
    path += name;
}

}  // namespace

PropertyNode::PropertyNode(std::shared_ptr<const std::string> path, size_t length, std::string_view name)
    : path_(std::move(path)), full_name_length_(length), name_(name) {}

PropertyNodePtr PropertyNode::createRoot() {
    return PropertyNodePtr(new PropertyNode(std::make_shared<const std::string>(), 0, {}));
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
    return path_->substr(0, full_name_length_);
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
    while (true) {
        std::string_view rest = path;
        const std::string_view name = takeComponent(rest);
        if (name.empty()) return node;
        PropertyNode* const child = node->children_.find(name);
        if (child == nullptr) return create ? node->makeBranch(path) : nullptr;
        node = child;
        path = rest;
    }
}

// What another thread has made meanwhile is taken.
PropertyNode* PropertyNode::makeBranch(std::string_view path) {
    const auto whole = std::make_shared<std::string>(getFullName());
    whole->reserve(whole->size() + 1 + path.size());
    for (std::string_view rest = path, name; !(name = takeComponent(rest)).empty();) {
        appendComponent(*whole, name);
    }
    PropertyNode* node = this;
    size_t length = full_name_length_;
    for (std::string_view rest = path, name; !(name = takeComponent(rest)).empty();) {
        length += (length == 0 ? 0 : 1) + name.size();
        node = node->children_.add(PropertyNodePtr(new PropertyNode(whole, length, name)));
    }
    return node;
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
