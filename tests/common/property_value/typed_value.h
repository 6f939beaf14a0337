// Shorthands for tests about values.
#pragma once

#include <string>
#include <utility>

#include "common/property_value.h"

namespace quill::test {

template <class T>
PropertyValue valueOf(T value) {
    PropertyValue result;
    result.set<T>(std::move(value));
    return result;
}

inline PropertyValue textValue(const char* text) {
    return valueOf<std::string>(text);
}

template <class T>
std::string textOf(T value) {
    return ValueTraitsHelper<T>::toString(&value);
}

// The value that the text parses to, or `otherwise` if it does not.
template <class T>
T parsed(const std::string& text, T otherwise) {
    T value{};
    return ValueTraitsHelper<T>::tryFromString(&value, text) ? value : otherwise;
}

template <class T>
bool parses(const std::string& text) {
    T value{};
    return ValueTraitsHelper<T>::tryFromString(&value, text);
}

}  // namespace quill::test
