#include "common/property_value.h"

#include <cstdlib>
#include <new>
#include <type_traits>
#include <utility>

namespace quill {

using property_internal::PropertyValueOperatorsT;

PropertyValue::PropertyValue(const PropertyValue& other) {
    if (other.empty()) return;
    struct Free {
        void operator()(void* block) const { std::free(block); }
    };
    std::unique_ptr<void, Free> block;
    if (other.heap_ != nullptr) {
        block.reset(std::malloc(other.size_));
        if (block == nullptr) throw std::bad_alloc();
    }
    other.operators_->valueCopy(block != nullptr ? block.get() : inline_, other.storage());
    heap_ = block.release();
    size_ = other.size_;
    operators_ = other.operators_;
}

PropertyValue::PropertyValue(PropertyValue&& other) noexcept {
    swap(other);
}

PropertyValue::~PropertyValue() {
    clear();
}

PropertyValue& PropertyValue::operator=(const PropertyValue& other) {
    PropertyValue copy(other);
    swap(copy);
    return *this;
}

PropertyValue& PropertyValue::operator=(PropertyValue&& other) noexcept {
    PropertyValue taken(std::move(other));
    swap(taken);
    return *this;
}

// A heap block moves with its pointer, an inline value is trivially copyable: nothing points into either.
void PropertyValue::swap(PropertyValue& other) noexcept {
    std::swap(inline_, other.inline_);
    std::swap(heap_, other.heap_);
    std::swap(size_, other.size_);
    operators_.swap(other.operators_);
}

void PropertyValue::destroyValue() noexcept {
    if (!empty()) operators_->valueDestructor(storage());
}

void PropertyValue::clear() {
    destroyValue();
    operators_.reset();
    std::free(heap_);
    heap_ = nullptr;
    size_ = 0;
}

template <class T>
void PropertyValue::set(T value) {
    static_assert(std::is_trivially_copyable_v<T> && sizeof(T) <= sizeof(inline_));
    if (!holds<T>()) {
        clear();
        operators_ = PropertyValueOperatorsT<T>::staticCopy();
        size_ = sizeof(T);
    }
    ::new (static_cast<void*>(inline_)) T(value);
}

// Kept on purpose: a string is never stored inline, although it might fit.
template <>
void PropertyValue::set<std::string>(std::string value) {
    destroyValue();
    operators_.reset();
    size_ = sizeof(std::string);
    void* const block = std::realloc(heap_, size_);
    if (block == nullptr) {
        clear();
        throw std::bad_alloc();
    }
    heap_ = block;
    *::new (heap_) std::string() = std::move(value);
    operators_ = PropertyValueOperatorsT<std::string>::staticCopy();
}

template <class T>
bool PropertyValue::get(T& out) const {
    if (empty()) return false;
    if (holds<T>()) {
        out = *static_cast<const T*>(storage());
    } else {
        ValueTraitsHelper<T>::fromString(&out, toString());
    }
    return true;
}

template <class T>
bool PropertyValue::setFromWholeTextAs(const std::string& text) {
    T value{};
    if (!holds<T>() || !ValueTraitsHelper<T>::tryFromWholeText(&value, text)) return false;
    set<T>(std::move(value));
    return true;
}

bool PropertyValue::setFromWholeText(const std::string& text) {
    if (empty()) {
        set<std::string>(text);
        return true;
    }
    return setFromWholeTextAs<float>(text) || setFromWholeTextAs<long>(text) ||
           setFromWholeTextAs<bool>(text) || setFromWholeTextAs<int>(text) ||
           setFromWholeTextAs<std::string>(text);
}

const char* PropertyValue::typeName() const {
    return empty() ? "" : operators_->typeName();
}

std::string PropertyValue::toString() const {
    return empty() ? std::string() : operators_->toString(storage());
}

bool PropertyValue::operator==(const PropertyValue& other) const {
    if (empty() || other.empty()) return empty() == other.empty();
    return operators_->typeInfo() == other.operators_->typeInfo() &&
           operators_->equals(storage(), other.storage());
}

template void PropertyValue::set<float>(float);
template void PropertyValue::set<long>(long);
template void PropertyValue::set<bool>(bool);
template void PropertyValue::set<int>(int);

template bool PropertyValue::get<float>(float&) const;
template bool PropertyValue::get<long>(long&) const;
template bool PropertyValue::get<bool>(bool&) const;
template bool PropertyValue::get<int>(int&) const;
template bool PropertyValue::get<std::string>(std::string&) const;

}  // namespace quill
