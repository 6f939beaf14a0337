// The accessors of a node's value and metadata: each holds the node's lock for its whole duration.
#include <string>
#include <utility>

#include "common/assertion.h"
#include "common/property_node.h"

namespace quill {
namespace {

// The texts that setFromText takes for a value of this type.
std::string acceptedTexts(const PropertyValue& value) {
    if (value.holds<bool>()) return "0 or 1";
    if (value.holds<int>()) return "a whole number from -2147483648 to 2147483647";
    if (value.holds<long>()) return "a whole number of at most 64 bits";
    if (value.holds<float>()) return "a number, nan, -nan, inf or -inf";
    return "text";
}

}  // namespace

// Counts a change and notifies the listeners. The record is built only for a node with listeners.
void PropertyNode::countChange(Lock& lock, int32_t kind, const std::string& name,
                               const PropertyValue& value) {
    ++lock->change_counter;
    if (listeners_.empty()) return;
    fireChangedOnData(lock, PropertyChangeInfo{kind, name, value, lock->change_counter});
}

template <class T>
T PropertyNode::get() {
    const Lock lock(this, nullptr);
    T value{};
    if (!lock->value.get(value)) {
        QUILL_ASSERTION_FAILED(record_sites::kGetOnEmptyNode, "Assertion failed: d->value.get<T>(temp)");
    }
    return value;
}

template <class T>
void PropertyNode::get(T& out, T defaultValue) {
    Lock lock(this, nullptr);
    if (lock->value.get(out)) return;
    out = std::move(defaultValue);
    lock->value.set<T>(out);
    countChange(lock, PropertyChangeInfo::kValue, {}, lock->value);
}

template <class T>
unsigned long PropertyNode::set(T value) {
    Lock lock(this, nullptr);
    if (lock->value.holdsEqual(value)) return 0;
    lock->value.set<T>(std::move(value));
    countChange(lock, PropertyChangeInfo::kValue, {}, lock->value);
    return lock->change_counter;
}

template <class T>
unsigned long PropertyNode::setMeta(const std::string& name, T value) {
    Lock lock(this, nullptr);
    PropertyValue& entry = lock->meta(name);
    if (entry.holdsEqual(value)) return 0;
    entry.set<T>(std::move(value));
    countChange(lock, PropertyChangeInfo::kMeta, name, entry);
    return lock->change_counter;
}

template <class T>
bool PropertyNode::getMeta(const std::string& name, T& out) {
    const Lock lock(this, nullptr);
    return lock->meta(name).get(out);
}

template <class T>
bool PropertyNode::findMeta(const std::string& name, T& out) {
    const Lock lock(this, nullptr);
    const PropertyValue* const entry = lock->findMeta(name);
    return entry != nullptr && entry->get(out);
}

bool PropertyNode::hasMeta(const std::string& name) {
    const Lock lock(this, nullptr);
    return lock->findMeta(name) != nullptr;
}

PropertyValue PropertyNode::value() {
    const Lock lock(this, nullptr);
    return lock->value;
}

void PropertyNode::setDefaultValue(const PropertyValue& value) {
    Lock lock(this, nullptr);
    lock->default_value = value;
    if (!lock->value.empty() || value.empty()) return;
    lock->value = value;
    countChange(lock, PropertyChangeInfo::kValue, {}, lock->value);
}

PropertyValue PropertyNode::defaultValue() {
    const Lock lock(this, nullptr);
    return lock->default_value;
}

bool PropertyNode::setFromText(const std::string& text, std::string* error) {
    Lock lock(this, nullptr);
    bool read_only = false;
    if (const PropertyValue* const entry = lock->findMeta("read_only")) entry->get(read_only);
    if (read_only) {
        if (error != nullptr) *error = "\"" + getFullName() + "\" is read-only";
        return false;
    }
    PropertyValue edited = lock->value;
    if (!edited.setFromWholeText(text)) {
        if (error != nullptr) {
            *error = "\"" + getFullName() + "\" takes " + acceptedTexts(edited) + ", not \"" + text + "\"";
        }
        return false;
    }
    if (edited == lock->value) return true;
    lock->value = std::move(edited);
    countChange(lock, PropertyChangeInfo::kValue, {}, lock->value);
    return true;
}

#define QUILL_INSTANTIATE_ACCESSORS(T)                                                          \
    template QUILL_COMMON_EXPORT T PropertyNode::get<T>();                                      \
    template QUILL_COMMON_EXPORT void PropertyNode::get<T>(T&, T);                              \
    template QUILL_COMMON_EXPORT unsigned long PropertyNode::set<T>(T);                         \
    template QUILL_COMMON_EXPORT unsigned long PropertyNode::setMeta<T>(const std::string&, T); \
    template QUILL_COMMON_EXPORT bool PropertyNode::getMeta<T>(const std::string&, T&);         \
    template QUILL_COMMON_EXPORT bool PropertyNode::findMeta<T>(const std::string&, T&);
QUILL_INSTANTIATE_ACCESSORS(float)
QUILL_INSTANTIATE_ACCESSORS(long)
QUILL_INSTANTIATE_ACCESSORS(bool)
QUILL_INSTANTIATE_ACCESSORS(int)
QUILL_INSTANTIATE_ACCESSORS(std::string)
#undef QUILL_INSTANTIATE_ACCESSORS

}  // namespace quill
