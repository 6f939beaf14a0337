// The texts of property values, written again: what a value shows, what a stream extraction takes from the front of a
// text, and what a whole text gives. It shares no code with the property tree.
#pragma once

#include <cctype>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <locale>
#include <sstream>
#include <string>

namespace quill::fuzz {

__extension__ typedef __int128 Wide;  // holds what exceeds 64 bits

template <class T>
struct Extracted {
    T value;
    bool succeeded;
    size_t used;  // characters
};

inline bool isBlank(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

inline std::string trimmed(const std::string& text) {
    size_t begin = 0, end = text.size();
    while (begin < end && isBlank(text[begin])) ++begin;
    while (end > begin && isBlank(text[end - 1])) --end;
    return text.substr(begin, end - begin);
}

// A decimal integer of T's range; the nearest limit when it is outside, 0 when there is none.
template <class T>
Extracted<T> integerIn(const std::string& text) {
    size_t at = 0;
    while (at < text.size() && isBlank(text[at])) ++at;
    const bool negative = at < text.size() && text[at] == '-';
    if (at < text.size() && (text[at] == '-' || text[at] == '+')) ++at;
    const size_t first = at;
    bool fits = true;
    Wide value = 0;
    const Wide lowest = std::numeric_limits<T>::min(), highest = std::numeric_limits<T>::max();
    for (; at < text.size() && text[at] >= '0' && text[at] <= '9'; ++at) {
        value = value * 10 + (negative ? '0' - text[at] : text[at] - '0');
        if (value < lowest || value > highest) fits = false;
        if (!fits) value = negative ? lowest : highest;
    }
    if (at == first) return {0, false, at};
    return {static_cast<T>(value), fits, at};
}

// The number is 0 or 1; others read as true and fail.
inline Extracted<bool> boolIn(const std::string& text) {
    const Extracted<long> number = integerIn<long>(text);
    const bool is_bool = number.succeeded && (number.value == 0 || number.value == 1);
    return {number.value != 0, is_bool, number.used};
}

// Digits with a point and an exponent, and nothing else.
inline bool isDecimal(const std::string& text) {
    size_t at = 0, digits = 0;
    const auto sign = [&] {
        if (at < text.size() && (text[at] == '-' || text[at] == '+')) ++at;
    };
    const auto number = [&] {
        size_t count = 0;
        for (; at < text.size() && text[at] >= '0' && text[at] <= '9'; ++at) ++count;
        return count;
    };
    sign();
    digits = number();
    if (at < text.size() && text[at] == '.') {
        ++at;
        digits += number();
    }
    if (digits == 0) return false;
    if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
        ++at;
        sign();
        if (number() == 0) return false;
    }
    return at == text.size();
}

inline bool floatWord(const std::string& text, float* value) {
    const float nan = std::numeric_limits<float>::quiet_NaN(), inf = std::numeric_limits<float>::infinity();
    if (text == "nan" || text == "-nan") *value = std::copysign(nan, text[0] == '-' ? -1.0F : 1.0F);
    if (text == "inf" || text == "-inf") *value = text[0] == '-' ? -inf : inf;
    return text == "nan" || text == "-nan" || text == "inf" || text == "-inf";
}

// The front of a text as a stream reads it.
inline Extracted<float> floatIn(const std::string& text) {
    float value = 0;
    if (floatWord(text, &value)) return {value, true, text.size()};
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    stream >> value;
    return {value, !stream.fail(), 0};
}

// A whole text. result: whether T takes it.
template <class T>
bool wholeInteger(const std::string& text, T* value) {
    const std::string word = trimmed(text);
    const Extracted<T> found = integerIn<T>(word);
    *value = found.value;
    return found.succeeded && found.used == word.size();
}
inline bool wholeBool(const std::string& text, bool* value) {
    const std::string word = trimmed(text);
    const Extracted<bool> found = boolIn(word);
    *value = found.value;
    return found.succeeded && found.used == word.size();
}
inline bool wholeFloat(const std::string& text, float* value) {
    const std::string word = trimmed(text);
    if (floatWord(word, value)) return true;
    if (!isDecimal(word)) return false;
    *value = std::strtof(word.c_str(), nullptr);
    return std::isfinite(*value);
}

inline std::string floatText(float value) {
    if (std::isnan(value)) return std::signbit(value) ? "-nan" : "nan";
    if (std::isinf(value)) return value < 0 ? "-inf" : "inf";
    char text[64];
    std::snprintf(text, sizeof text, "%.6f", static_cast<double>(value));
    return text;
}

}  // namespace quill::fuzz
