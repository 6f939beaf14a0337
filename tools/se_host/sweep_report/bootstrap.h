// The confidence of a mean: the percentile bootstrap (Efron and Tibshirani: An Introduction to the Bootstrap, 1993, chapter
// 13). The same values in the same order give the same bits on every machine.
#pragma once

#include <vector>

namespace se_host::report {

inline constexpr int kResamples = 10000;

struct Interval {
    double low;
    double high;

    bool excludesZero() const { return low > 0 || high < 0; }
};

// In which the mean lies with a confidence of 95 %. needs: a value.
Interval bootstrapOfMean(const std::vector<double>& values);

}  // namespace se_host::report
