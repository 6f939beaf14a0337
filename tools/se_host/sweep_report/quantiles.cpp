#include "tools/se_host/sweep_report/quantiles.h"

#include <algorithm>
#include <cstddef>

namespace se_host::report {

double quantileOf(const std::vector<double>& sorted, double share) {
    const double place = share * static_cast<double>(sorted.size() - 1);
    const auto below = static_cast<size_t>(place);
    const size_t above = std::min(below + 1, sorted.size() - 1);
    return sorted[below] + (place - static_cast<double>(below)) * (sorted[above] - sorted[below]);
}

std::optional<Quantiles> quantilesOf(std::vector<double> values) {
    if (values.empty()) return std::nullopt;
    std::sort(values.begin(), values.end());
    const auto at = [&](double share) { return quantileOf(values, share); };
    return Quantiles{values.size(), at(0.1), at(0.25), at(0.5), at(0.75), at(0.9)};
}

}  // namespace se_host::report
