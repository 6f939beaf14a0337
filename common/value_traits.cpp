#include "common/value_traits.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <locale>
#include <sstream>
#include <type_traits>

#include "common/assertion.h"

namespace quill {
namespace {

constexpr float kLargestFinite = 3.4028235e38f;

struct FloatWord {
    const char* text;
    uint32_t bits;
};

constexpr FloatWord kFloatWords[] = {
    {"-nan", 0xFFC00000u},
    {"nan", 0x7FC00000u},
    {"-inf", 0xFF800000u},
    {"inf", 0x7F800000u},
};

enum class Rest { kIgnored, kRefused };

bool extractWord(float& target, const std::string& text) {
    for (const FloatWord& word : kFloatWords) {
        if (text != word.text) continue;
        std::memcpy(&target, &word.bits, sizeof(target));
        return true;
    }
    return false;
}

template <class T>
bool extract(T& target, const std::string& text, Rest rest) {
    if constexpr (std::is_same_v<T, std::string>) {
        target = text;
        return true;
    } else {
        if constexpr (std::is_same_v<T, float>) {
            if (extractWord(target, text)) return true;
        }
        std::istringstream stream(text);
        stream.imbue(std::locale::classic());
        stream.exceptions(std::ios::badbit);  // no memory is not a wrong text
        stream >> target;
        return !stream.fail() &&
               (rest == Rest::kIgnored || stream.peek() == std::istringstream::traits_type::eof());
    }
}

std::string withoutSurroundingBlanks(const std::string& text) {
    constexpr const char* kBlanks = " \t\n\v\f\r";
    const size_t begin = text.find_first_not_of(kBlanks);
    if (begin == std::string::npos) return {};
    return text.substr(begin, text.find_last_not_of(kBlanks) - begin + 1);
}

}  // namespace

template <class T>
std::string ValueTraitsHelper<T>::toString(const void* value) {
    if constexpr (std::is_same_v<T, std::string>) {
        return *static_cast<const std::string*>(value);
    } else if constexpr (std::is_same_v<T, float>) {
        return property_internal::ValueTraitsHelperFloatingPoint<T>::toString(value);
    } else {
        return std::to_string(*static_cast<const T*>(value));
    }
}

template <class T>
bool ValueTraitsHelper<T>::tryFromString(void* value, const std::string& text) {
    return extract(*static_cast<T*>(value), text, Rest::kIgnored);
}

template <class T>
bool ValueTraitsHelper<T>::tryFromWholeText(void* value, const std::string& text) {
    if constexpr (std::is_same_v<T, std::string>) {
        return tryFromString(value, text);
    } else {
        return extract(*static_cast<T*>(value), withoutSurroundingBlanks(text), Rest::kRefused);
    }
}

template <class T>
void ValueTraitsHelper<T>::fromString(void* value, const std::string& text) {
    if (!tryFromString(value, text)) {
        QUILL_ASSERTION_FAILED(record_sites::kFailedConversion,
                               "Assertion failed: Failed conversion from %s.", text.c_str());
    }
}

namespace property_internal {

template <class T>
std::string ValueTraitsHelperFloatingPoint<T>::toString(const void* value) {
    const T number = *static_cast<const T*>(value);
    if (std::isnan(number)) return std::signbit(number) ? "-nan" : "nan";
    if (!(std::fabs(number) <= kLargestFinite)) return number < 0 ? "-inf" : "inf";
    char text[64];  // the largest has 39 digits before the point
    const auto end =
        std::to_chars(text, text + sizeof(text), static_cast<double>(number), std::chars_format::fixed, 6);
    return std::string(text, end.ptr);
}

template <class T>
bool ValueTraitsHelperFloatingPoint<T>::tryFromString(void* value, const std::string& text) {
    return extract(*static_cast<T*>(value), text, Rest::kIgnored);
}

template struct ValueTraitsHelperFloatingPoint<float>;

}  // namespace property_internal

template struct ValueTraitsHelper<float>;
template struct ValueTraitsHelper<long>;
template struct ValueTraitsHelper<bool>;
template struct ValueTraitsHelper<int>;
template struct ValueTraitsHelper<std::string>;

}  // namespace quill
