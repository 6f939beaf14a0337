#include "common/property_children.h"

#include <cstddef>
#include <functional>
#include <utility>

#include "common/property_node.h"

namespace quill {

// Open addressing with linear probing; at most half of the slots are taken, so that every search ends at a
// child or at a free slot. A slot is written once: first the hash, then the child that makes it valid.
struct PropertyChildren::Table {
    struct Slot {
        size_t hash = 0;
        std::atomic<PropertyNode*> child{nullptr};
    };

    // in: a power of two.
    explicit Table(size_t size) : mask(size - 1), slots(std::make_unique<Slot[]>(size)) {}

    PropertyNode* find(size_t hash, std::string_view name) const {
        for (size_t i = hash;; ++i) {
            const Slot& slot = slots[i & mask];
            PropertyNode* const child = slot.child.load(std::memory_order_acquire);
            if (child == nullptr || (slot.hash == hash && child->name() == name)) return child;
        }
    }

    void insert(size_t hash, PropertyNode* child) {
        size_t i = hash;
        while (slots[i & mask].child.load(std::memory_order_relaxed) != nullptr) ++i;
        slots[i & mask].hash = hash;
        slots[i & mask].child.store(child, std::memory_order_release);
    }

    bool hasRoomFor(size_t children) const { return 2 * children <= mask + 1; }

    const size_t mask;
    const std::unique_ptr<Slot[]> slots;
};

namespace {

constexpr size_t kSmallestTable = 4;

size_t hashOf(std::string_view name) {
    return std::hash<std::string_view>()(name);
}

}  // namespace

PropertyChildren::PropertyChildren() = default;
PropertyChildren::~PropertyChildren() = default;

PropertyNode* PropertyChildren::find(std::string_view name) const {
    const Table* const table = table_.load(std::memory_order_acquire);
    return table == nullptr ? nullptr : table->find(hashOf(name), name);
}

PropertyNode* PropertyChildren::add(const PropertyNodePtr& child) {
    const std::lock_guard lock(mutex_);
    if (PropertyNode* const earlier = find(child->name())) return earlier;
    makeRoom();
    owned_.push_back(child);
    tables_.back()->insert(hashOf(child->name()), child.get());
    return child.get();
}

// Makes the table twice as large when it is half full. A search that still runs in the smaller one does not
// see the children that are added later, as if it had run before.
void PropertyChildren::makeRoom() {
    const size_t children = owned_.size() + 1;
    if (!tables_.empty() && tables_.back()->hasRoomFor(children)) return;
    const size_t size = tables_.empty() ? kSmallestTable : 2 * (tables_.back()->mask + 1);
    auto larger = std::make_unique<Table>(size);
    for (const PropertyNodePtr& child : owned_) larger->insert(hashOf(child->name()), child.get());
    tables_.push_back(std::move(larger));
    table_.store(tables_.back().get(), std::memory_order_release);
}

std::vector<PropertyNodePtr> PropertyChildren::list() const {
    const std::lock_guard lock(mutex_);
    return owned_;
}

std::vector<PropertyNodePtr> PropertyChildren::release() {
    table_.store(nullptr, std::memory_order_relaxed);
    tables_.clear();
    return std::exchange(owned_, {});
}

}  // namespace quill
