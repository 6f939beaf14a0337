// A tuning beside the reference, recording by recording.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "tools/se_host/sweep_report/bootstrap.h"
#include "tools/se_host/sweep_report/results.h"

namespace se_host::report {

inline constexpr size_t kFewPairs = 10;  // with fewer the interval is too narrow

struct Pair {
    size_t recording;
    double difference;  // of the tuning's value from the reference's
    double gain;        // the same, above 0 where it is better; 0 without a better direction
};

struct Comparison {
    size_t measure;  // in the results
    size_t tuning;
    std::vector<Pair> pairs;  // recordings that have both values
    double mean = 0;          // difference
    double gained = 0;        // share of the recordings
    double lost = 0;
    Interval interval{};   // of the mean
    double by_chance = 1;  // Holm-corrected over the comparisons that were made together
    Better better = Better::kNeither;

    bool isSame() const;  // all differences are 0
    // The interval excludes 0 and there are not too few pairs.
    bool isClear() const { return pairs.size() >= kFewPairs && interval.excludesZero(); }
    bool isGain() const { return better == Better::kMore ? mean > 0 : mean < 0; }
};

// Of every tuning but the reference, in every measure that is not an angle, over these recordings; those without a pair are
// left out. `by_chance` is not set.
std::vector<Comparison> compareAll(const Results& results, size_t reference,
                                   const std::vector<size_t>& recordings);

// Sets `by_chance` of comparisons that are made together. What is the same in all recordings is no test.
void correctTogether(const std::vector<Comparison*>& comparisons);

// The pairs that gained most, the largest gain first, or those that lost most. At most `count`.
std::vector<Pair> mostGained(const Comparison& comparison, size_t count);
std::vector<Pair> mostLost(const Comparison& comparison, size_t count);

}  // namespace se_host::report
