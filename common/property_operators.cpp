#include "common/property_operators.h"

#include <cmath>
#include <memory>
#include <new>
#include <type_traits>

namespace quill::property_internal {
namespace {

template <class T>
constexpr const char* kTypeName = nullptr;
template <>
constexpr const char* kTypeName<float> = "float";
template <>
constexpr const char* kTypeName<long> = "int64";
template <>
constexpr const char* kTypeName<bool> = "bool";
template <>
constexpr const char* kTypeName<int> = "int32";
template <>
constexpr const char* kTypeName<std::string> = "string";

template <class T>
const T& as(const void* value) {
    return *static_cast<const T*>(value);
}

}  // namespace

PropertyValueOperators::~PropertyValueOperators() = default;

template <class T>
std::shared_ptr<PropertyValueOperators> PropertyValueOperatorsT<T>::staticCopy() {
    // Never destroyed: destructors of static objects may still use values.
    static const auto* const instance =
        new std::shared_ptr<PropertyValueOperators>(std::make_shared<PropertyValueOperatorsT<T>>());
    return *instance;
}

template <class T>
std::string PropertyValueOperatorsT<T>::toString(const void* value) const {
    return ValueTraitsHelper<T>::toString(value);
}

template <class T>
void PropertyValueOperatorsT<T>::fromString(void* value, const std::string& text) const {
    ValueTraitsHelper<T>::fromString(value, text);
}

template <class T>
bool PropertyValueOperatorsT<T>::canConvertToTypeFromString(const std::string& text) const {
    T scratch{};
    return ValueTraitsHelper<T>::tryFromString(&scratch, text);
}

template <class T>
void PropertyValueOperatorsT<T>::valueDestructor(void* value) const {
    std::destroy_at(static_cast<T*>(value));
}

template <class T>
void PropertyValueOperatorsT<T>::valueCopy(void* destination, const void* source) const {
    if (destination != nullptr) ::new (destination) T(as<T>(source));
}

template <class T>
bool PropertyValueOperatorsT<T>::equals(const void* a, const void* b) const {
    if constexpr (std::is_floating_point_v<T>) {
        if (std::isnan(as<T>(a)) && std::isnan(as<T>(b))) return true;
    }
    return as<T>(a) == as<T>(b);
}

template <class T>
const std::type_info& PropertyValueOperatorsT<T>::typeInfo() const {
    return typeid(T);
}

template <class T>
const char* PropertyValueOperatorsT<T>::typeName() const {
    return kTypeName<T>;
}

template class PropertyValueOperatorsT<float>;
template class PropertyValueOperatorsT<long>;
template class PropertyValueOperatorsT<bool>;
template class PropertyValueOperatorsT<int>;
template class PropertyValueOperatorsT<std::string>;

}  // namespace quill::property_internal
