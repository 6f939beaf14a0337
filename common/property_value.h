// A value of one of five types, or none: float, long ("int64"), bool, int ("int32"), std::string ("string").
// Threads: [any], one at a time; it has no lock of its own, and a node's lock guards the node's values.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <typeinfo>

#include "common/export.h"
#include "common/property_operators.h"
#include "common/value_traits.h"

namespace quill {

// T is one of the five types throughout; any other is an undefined reference when linking.
class QUILL_COMMON_EXPORT PropertyValue {
  public:
    PropertyValue() = default;
    PropertyValue(const PropertyValue& other);
    PropertyValue(PropertyValue&& other) noexcept;
    ~PropertyValue();

    // Makes this an independent copy.
    PropertyValue& operator=(const PropertyValue& other);
    PropertyValue& operator=(PropertyValue&& other) noexcept;

    // Replaces value and type. fails: std::bad_alloc, leaving the value empty.
    template <class T>
    void set(T value);

    // out: the value as a T, through its text when it is of another type. A text that T cannot take is the
    // soft assertion "Failed conversion from ..."; `out` then holds what the extraction stored and the read
    // counts. fails: false, `out` untouched, when empty.
    template <class T>
    bool get(T& out) const;

    // Replaces the value by `text`, converted to the present type; an empty value becomes a string. fails:
    // false, nothing changed, when the type cannot hold the whole text, surrounding blanks aside.
    bool setFromWholeText(const std::string& text);

    void clear();
    bool empty() const { return operators_ == nullptr; }

    // The type's name and the value's text; both empty when there is no value.
    const char* typeName() const;
    std::string toString() const;

    // Bytes of the stored type, 0 when empty.
    uint64_t size() const { return empty() ? 0 : size_; }

    // The address of the value: inside this object, a string in a heap block. null when empty.
    const void* address() const { return empty() ? nullptr : storage(); }

    template <class T>
    bool holds() const {
        return !empty() && operators_->typeInfo() == typeid(T);
    }

    // Whether the value is a T and equal to this one. A value of another type never is.
    template <class T>
    bool holdsEqual(const T& value) const {
        return holds<T>() && operators_->equals(storage(), &value);
    }

    // Same type and equal values; two empty values are equal.
    bool operator==(const PropertyValue& other) const;
    bool operator!=(const PropertyValue& other) const { return !(*this == other); }

  private:
    const void* storage() const { return heap_ != nullptr ? heap_ : inline_; }
    void* storage() { return heap_ != nullptr ? heap_ : inline_; }
    void swap(PropertyValue& other) noexcept;
    void destroyValue() noexcept;
    template <class T>
    bool setFromWholeTextAs(const std::string& text);

    alignas(uint64_t) unsigned char inline_[sizeof(uint64_t)] = {};
    void* heap_ = nullptr;  // of malloc; null: the value is in inline_
    uint64_t size_ = 0;
    std::shared_ptr<property_internal::PropertyValueOperators> operators_;  // null: empty
};

template <>
QUILL_COMMON_EXPORT void PropertyValue::set<std::string>(std::string value);

}  // namespace quill
