#include "pipewire/values.h"

#include <spa/param/props.h>
#include <spa/pod/iter.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <iterator>
#include <limits>
#include <string_view>

namespace se_pipewire {
namespace {

enum class Kind { kSwitch, kInt, kLong, kFloat };

Kind kindOf(const se_host_setting_t& setting) {
    const std::string_view type = setting.type;
    if (type == "Bool") return Kind::kSwitch;
    if (type == "Float32") return Kind::kFloat;
    const bool is_long = type == "UInt32" || type == "Int40" || type == "UInt40";
    return is_long ? Kind::kLong : Kind::kInt;
}

// The number at the beginning of a text as "2 - Narrow"; 0 when there is none.
template <class Number>
Number numberIn(const std::string& text) {
    Number number{};
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

template <class Number>
std::string textOfNumber(Number number) {
    char text[32];
    return {text, std::to_chars(std::begin(text), std::end(text), number).ptr};
}

// A limit beyond the range of the type is that of the type.
template <class Number>
Number limit(double value) {
    constexpr Number kLowest = std::numeric_limits<Number>::lowest();
    constexpr Number kHighest = std::numeric_limits<Number>::max();
    if (value <= static_cast<double>(kLowest)) return kLowest;
    if (value >= static_cast<double>(kHighest)) return kHighest;
    return static_cast<Number>(value);
}

template <class Number, class Add>
void addChoice(spa_pod_builder& builder, const se_host_setting_t& setting, const std::string& text, Add add) {
    spa_pod_frame frame;
    spa_pod_builder_push_choice(&builder, &frame, SPA_CHOICE_Range, 0);
    add(&builder, numberIn<Number>(text));
    add(&builder, limit<Number>(setting.lowest));
    add(&builder, limit<Number>(setting.highest));
    spa_pod_builder_pop(&builder, &frame);
}

void addSwitch(spa_pod_builder& builder, bool value) {
    spa_pod_frame frame;
    spa_pod_builder_push_choice(&builder, &frame, SPA_CHOICE_Enum, 0);
    for (const bool one : {value, false, true}) spa_pod_builder_bool(&builder, one);
    spa_pod_builder_pop(&builder, &frame);
}

}  // namespace

std::optional<std::string> textOf(const spa_pod* pod) {
    switch (SPA_POD_TYPE(pod)) {
        case SPA_TYPE_Bool: {
            bool value = false;
            if (spa_pod_get_bool(pod, &value) == 0) return value ? "1" : "0";
            break;
        }
        case SPA_TYPE_Int: {
            int32_t value = 0;
            if (spa_pod_get_int(pod, &value) == 0) return textOfNumber(value);
            break;
        }
        case SPA_TYPE_Long: {
            int64_t value = 0;
            if (spa_pod_get_long(pod, &value) == 0) return textOfNumber(value);
            break;
        }
        case SPA_TYPE_Float: {
            float value = 0;
            if (spa_pod_get_float(pod, &value) == 0) return textOfNumber(value);
            break;
        }
        case SPA_TYPE_Double: {
            double value = 0;
            if (spa_pod_get_double(pod, &value) == 0) return textOfNumber(value);
            break;
        }
        case SPA_TYPE_String: {
            const char* value = nullptr;
            if (spa_pod_get_string(pod, &value) == 0) return value;
            break;
        }
        default:
            break;
    }
    return std::nullopt;
}

void addValue(spa_pod_builder& builder, const se_host_setting_t& setting, const std::string& text) {
    switch (kindOf(setting)) {
        case Kind::kSwitch:
            spa_pod_builder_bool(&builder, numberIn<int>(text) != 0);
            break;
        case Kind::kInt:
            spa_pod_builder_int(&builder, numberIn<int32_t>(text));
            break;
        case Kind::kLong:
            spa_pod_builder_long(&builder, numberIn<int64_t>(text));
            break;
        case Kind::kFloat:
            spa_pod_builder_float(&builder, numberIn<float>(text));
            break;
    }
}

void addRange(spa_pod_builder& builder, const se_host_setting_t& setting, const std::string& text) {
    switch (kindOf(setting)) {
        case Kind::kSwitch:
            addSwitch(builder, numberIn<int>(text) != 0);
            break;
        case Kind::kInt:
            addChoice<int32_t>(builder, setting, text, spa_pod_builder_int);
            break;
        case Kind::kLong:
            addChoice<int64_t>(builder, setting, text, spa_pod_builder_long);
            break;
        case Kind::kFloat:
            addChoice<float>(builder, setting, text, spa_pod_builder_float);
            break;
    }
}

}  // namespace se_pipewire
