#include "tools/se_host/sweep_report/significance.h"

#include <algorithm>
#include <boost/math/distributions/students_t.hpp>
#include <cmath>
#include <cstddef>
#include <numeric>

namespace se_host::report {

double probabilityByChance(const std::vector<double>& differences) {
    if (differences.size() < 2) return 1;
    const auto count = static_cast<double>(differences.size());
    const double mean = std::accumulate(differences.begin(), differences.end(), 0.0) / count;
    double squares = 0;
    for (const double difference : differences) squares += (difference - mean) * (difference - mean);
    if (mean == 0) return 1;
    const double error = std::sqrt(squares / (count - 1) / count);
    if (error == 0) return 0;
    const boost::math::students_t distribution(count - 1);
    return std::min(1.0, 2 * boost::math::cdf(boost::math::complement(distribution, std::abs(mean) / error)));
}

std::vector<double> correctedByHolm(const std::vector<double>& probabilities) {
    std::vector<size_t> order(probabilities.size());
    std::iota(order.begin(), order.end(), size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&](size_t a, size_t b) { return probabilities[a] < probabilities[b]; });
    std::vector<double> corrected(probabilities.size());
    double largest = 0;
    for (size_t i = 0; i < order.size(); ++i) {
        const double times = static_cast<double>(order.size() - i);
        largest = std::max(largest, std::min(1.0, times * probabilities[order[i]]));
        corrected[order[i]] = largest;
    }
    return corrected;
}

}  // namespace se_host::report
