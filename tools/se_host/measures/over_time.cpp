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
    char text[32];
    return {text, std::to_chars(text, text + sizeof text, *value).ptr};
}

}  // namespace

void writeOverTime(std::ostream& to, const Recording& recording, const Processed& processed,
                   const std::optional<SceneParts>& parts) {
    const Analysis analysis(recording, processed, parts);
    to << "seconds";
    for (const MeasureRow& row : measureRows()) {
        if (row.in_second != nullptr) to << ',' << row.measure.name;
    }
    to << '\n';
    for (size_t begin = 0; begin < analysis.blocks(); begin += kSecond) {
        const Span second{begin, std::min(begin + kSecond, analysis.blocks())};
        to << textOf(static_cast<double>(second.end) / 100);
        for (const MeasureRow& row : measureRows()) {
            if (row.in_second != nullptr) to << ',' << textOf(valueOf(row.in_second, analysis, second));
        }
        to << '\n';
    }
}

}  // namespace se_host
