#include "bench/engine_vs_peer/statistics.h"

#include <algorithm>
#include <boost/math/distributions/students_t.hpp>
#include <cmath>
#include <numeric>

namespace engine_vs_peer {

Estimate estimate(const std::vector<double>& values) {
    const auto count = static_cast<double>(values.size());
    const double mean = std::accumulate(values.begin(), values.end(), 0.0) / count;
    if (values.size() < 2) return {mean, NAN};
    double squares = 0;
    for (const double value : values) squares += (value - mean) * (value - mean);
    const double t = boost::math::quantile(boost::math::students_t(count - 1), 0.975);
    return {mean, t * std::sqrt(squares / (count - 1) / count)};
}

double quantile(std::vector<double> values, double share) {
    const auto rank = static_cast<ptrdiff_t>(std::ceil(share * static_cast<double>(values.size()))) - 1;
    const auto at = values.begin() + std::max<ptrdiff_t>(0, rank);
    std::nth_element(values.begin(), at, values.end());
    return *at;
}

}  // namespace engine_vs_peer
