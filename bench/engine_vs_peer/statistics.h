// Means with confidence intervals, and quantiles.
#pragma once

#include <vector>

namespace engine_vs_peer {

struct Estimate {
    double mean;
    double margin;  // half of the 95 % confidence interval (Student's t); NaN for a single value
};

// needs: at least one value.
Estimate estimate(const std::vector<double>& values);

// The smallest value that this share of the values does not exceed. needs: 0 to 1, at least one value.
double quantile(std::vector<double> values, double share);

}  // namespace engine_vs_peer
