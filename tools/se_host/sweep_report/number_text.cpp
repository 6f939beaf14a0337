#include "tools/se_host/sweep_report/number_text.h"

#include <charconv>
#include <cmath>
#include <cstring>

namespace se_host::report {
namespace {

constexpr const char* kMinus = "\u2212";

struct UnitDecimals {
    const char* unit;
    int decimals;
};

constexpr UnitDecimals kDecimals[] = {{"dB", 1},  {"dBFS", 1},    {"s", 2}, {"ms", 1},
                                      {"ppm", 1}, {"degrees", 1}, {"%", 3}};

int decimalsOf(const Measure& measure) {
    for (const UnitDecimals& row : kDecimals) {
        if (std::strcmp(row.unit, measure.unit) == 0) return row.decimals;
    }
    return 3;
}

std::string fixed(double value, int decimals) {
    char text[400];
    return {text, std::to_chars(text, text + sizeof text, value, std::chars_format::fixed, decimals).ptr};
}

// The sign of what is shown: -0.001 with one decimal is 0.0.
std::string signedText(double value, int decimals, const char* plus) {
    std::string magnitude = fixed(std::abs(value), decimals);
    const bool is_zero = magnitude.find_first_not_of("0.") == std::string::npos;
    if (is_zero) return magnitude;
    return (value < 0 ? kMinus : plus) + magnitude;
}

}  // namespace

std::string valueText(const Measure& measure, double value) {
    return signedText(value, decimalsOf(measure), "");
}

std::string differenceText(const Measure& measure, double difference) {
    return signedText(difference, decimalsOf(measure) + 1, "+");
}

std::string withUnit(const Measure& measure, const std::string& number) {
    return *measure.unit == '\0' ? number : number + " " + measure.unit;
}

std::string percentText(double share) {
    return fixed(100 * share, 0) + " %";
}

std::string probabilityText(double probability) {
    if (probability < 0.001) return "< 0.001";
    return fixed(probability, probability < 0.1 ? 3 : 2);
}

}  // namespace se_host::report
