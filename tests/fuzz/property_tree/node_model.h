// A property node as it must behave: a variant, a map of entries and a counter. Written without the property tree.
#pragma once

#include <cstring>
#include <map>
#include <string>
#include <variant>

#include "tests/fuzz/property_tree/text_model.h"

namespace quill::fuzz {

using ModelValue = std::variant<std::monostate, float, long, bool, int, std::string>;

inline std::string textOf(const ModelValue& value) {
    struct Text {
        std::string operator()(std::monostate) const { return {}; }
        std::string operator()(float number) const { return floatText(number); }
        std::string operator()(long number) const { return std::to_string(number); }
        std::string operator()(bool on) const { return on ? "1" : "0"; }
        std::string operator()(int number) const { return std::to_string(number); }
        std::string operator()(const std::string& text) const { return text; }
    };
    return std::visit(Text{}, value);
}

inline const char* typeOf(const ModelValue& value) {
    constexpr const char* kNames[] = {"", "float", "int64", "bool", "int32", "string"};
    return kNames[value.index()];
}

// Whether the model holds this type and value. Any two NaN are equal, and so are both zeros.
template <class T>
bool holdsEqual(const ModelValue& model, const T& value) {
    if (!std::holds_alternative<T>(model)) return false;
    const T& held = std::get<T>(model);
    if constexpr (std::is_same_v<T, float>) {
        if (std::isnan(held) && std::isnan(value)) return true;
    }
    return held == value;
}

inline bool isSame(const ModelValue& a, const ModelValue& b) {
    return std::visit([&](const auto& value) { return holdsEqual(a, value); }, b);
}

// What a text gives a T that was T{} before; whether it was a failed conversion.
template <class T>
T converted(const std::string& text, bool* failed) {
    if constexpr (std::is_same_v<T, std::string>) {
        return text;
    } else if constexpr (std::is_same_v<T, float>) {
        const Extracted<float> found = floatIn(text);
        *failed = !found.succeeded;
        return found.value;
    } else if constexpr (std::is_same_v<T, bool>) {
        const Extracted<bool> found = boolIn(text);
        *failed = !found.succeeded;
        return found.value;
    } else {
        const Extracted<T> found = integerIn<T>(text);
        *failed = !found.succeeded;
        return found.value;
    }
}

template <class T>
T readAs(const ModelValue& model, bool* failed) {
    if (std::holds_alternative<T>(model)) return std::get<T>(model);
    return converted<T>(textOf(model), failed);
}

// Reads the whole text as the type that the present value has. result: whether it is taken.
struct WholeText {
    const std::string& text;
    ModelValue* edited;

    bool operator()(std::monostate) const { return keep(true, text); }
    bool operator()(const std::string&) const { return keep(true, text); }
    bool operator()(float value) const { return keep(wholeFloat(text, &value), value); }
    bool operator()(long value) const { return keep(wholeInteger(text, &value), value); }
    bool operator()(bool value) const { return keep(wholeBool(text, &value), value); }
    bool operator()(int value) const { return keep(wholeInteger(text, &value), value); }

  private:
    template <class T>
    bool keep(bool taken, const T& value) const {
        if (taken) *edited = value;
        return taken;
    }
};

inline bool fromWholeText(const ModelValue& present, const std::string& text, ModelValue* edited) {
    return std::visit(WholeText{text, edited}, present);
}

struct NodeModel {
    ModelValue value;
    ModelValue default_value;
    std::map<std::string, ModelValue> meta;
    unsigned long counter = 0;
    unsigned long told = 0;  // changes since there has been a listener
    bool has_listener = false;

    void changed() {
        ++counter;
        if (has_listener) ++told;
    }
};

}  // namespace quill::fuzz
