// Where the values of a sample lie.
#pragma once

#include <optional>
#include <vector>

namespace se_host::report {

struct Quantiles {
    size_t count;
    double low;    // 10 %
    double first;  // 25 %
    double median;
    double third;  // 75 %
    double high;   // 90 %
};

// Of sorted values, interpolated between the two nearest (Hyndman and Fan, The American Statistician 50(4), 1996, type 7).
// needs: a value.
double quantileOf(const std::vector<double>& sorted, double share);

// Nothing without a value.
std::optional<Quantiles> quantilesOf(std::vector<double> values);

}  // namespace se_host::report
