#include <algorithm>
#include <charconv>
#include <string>

#include "tools/se_host/measures/table.h"

namespace se_host {
namespace {

constexpr size_t kSecond = 100;  // blocks

// The same in every locale; empty for nothing.
std::string textOf(const std::optional<double>& value) {
    if (!value) return {};
    char text[64];  // an engine's largest number has 39 digits before the point
    return {text, std::to_chars(text, text + sizeof text, *value, std::chars_format::fixed).ptr};
}

}  // namespace

void writeOverTime(std::ostream& to, const Analysis& analysis) {
    to << "seconds";
    for (const MeasureRow& row : measureRows()) to << ',' << row.measure.name;
    to << '\n';
    for (size_t begin = 0; begin < analysis.blocks(); begin += kSecond) {
        const Span second{begin, std::min(begin + kSecond, analysis.blocks())};
        to << textOf(static_cast<double>(second.end) / 100);
        for (const MeasureRow& row : measureRows()) {
            to << ',' << textOf(valueOf(row.in_second, analysis, second));
        }
        to << '\n';
    }
}

}  // namespace se_host
