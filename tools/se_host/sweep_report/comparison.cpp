#include "tools/se_host/sweep_report/comparison.h"

#include <algorithm>
#include <numeric>

#include "tools/se_host/sweep_report/significance.h"

namespace se_host::report {
namespace {

double gainOf(Better better, double difference) {
    if (better == Better::kNeither) return 0;
    return better == Better::kMore ? difference : -difference;
}

std::vector<Pair> pairsOf(const MeasureResults& results, size_t tuning, size_t reference,
                          const std::vector<size_t>& recordings) {
    std::vector<Pair> pairs;
    for (const size_t recording : recordings) {
        const auto& value = results.values[tuning][recording];
        const auto& other = results.values[reference][recording];
        if (!value || !other) continue;
        pairs.push_back({recording, *value - *other, gainOf(results.measure.better, *value - *other)});
    }
    return pairs;
}

std::vector<double> differencesOf(const Comparison& comparison) {
    std::vector<double> differences;
    for (const Pair& pair : comparison.pairs) differences.push_back(pair.difference);
    return differences;
}

double shareOf(const std::vector<Pair>& pairs, bool (*counts)(const Pair&)) {
    return static_cast<double>(std::count_if(pairs.begin(), pairs.end(), counts)) /
           static_cast<double>(pairs.size());
}

// Without `by_chance`, which depends on the other comparisons.
void compute(Comparison& comparison) {
    const std::vector<double> differences = differencesOf(comparison);
    comparison.mean = std::accumulate(differences.begin(), differences.end(), 0.0) /
                      static_cast<double>(differences.size());
    comparison.gained = shareOf(comparison.pairs, [](const Pair& pair) { return pair.gain > 0; });
    comparison.lost = shareOf(comparison.pairs, [](const Pair& pair) { return pair.gain < 0; });
    comparison.interval = comparison.isSame() ? Interval{0, 0} : bootstrapOfMean(differences);
}

// `sign` 1: gains.
std::vector<Pair> extremes(const Comparison& comparison, size_t count, double sign) {
    std::vector<Pair> pairs;
    for (const Pair& pair : comparison.pairs) {
        if (sign * pair.gain > 0) pairs.push_back(pair);
    }
    std::stable_sort(pairs.begin(), pairs.end(),
                     [sign](const Pair& a, const Pair& b) { return sign * a.gain > sign * b.gain; });
    pairs.resize(std::min(pairs.size(), count));
    return pairs;
}

}  // namespace

bool Comparison::isSame() const {
    return std::all_of(pairs.begin(), pairs.end(), [](const Pair& pair) { return pair.difference == 0; });
}

std::vector<Comparison> compareAll(const Results& results, size_t reference,
                                   const std::vector<size_t>& recordings) {
    std::vector<Comparison> comparisons;
    for (size_t measure = 0; measure < results.measures.size(); ++measure) {
        if (results.measures[measure].measure.is_angle) continue;
        for (size_t tuning = 0; tuning < results.tunings.size(); ++tuning) {
            if (tuning == reference) continue;
            Comparison comparison;
            comparison.measure = measure;
            comparison.tuning = tuning;
            comparison.better = results.measures[measure].measure.better;
            comparison.pairs = pairsOf(results.measures[measure], tuning, reference, recordings);
            if (comparison.pairs.empty()) continue;
            compute(comparison);
            comparisons.push_back(std::move(comparison));
        }
    }
    return comparisons;
}

void correctTogether(const std::vector<Comparison*>& comparisons) {
    std::vector<Comparison*> tested;
    std::vector<double> probabilities;
    for (Comparison* const comparison : comparisons) {
        if (comparison->isSame()) continue;
        tested.push_back(comparison);
        probabilities.push_back(probabilityByChance(differencesOf(*comparison)));
    }
    const std::vector<double> corrected = correctedByHolm(probabilities);
    for (size_t i = 0; i < tested.size(); ++i) tested[i]->by_chance = corrected[i];
}

std::vector<Pair> mostGained(const Comparison& comparison, size_t count) {
    return extremes(comparison, count, 1);
}

std::vector<Pair> mostLost(const Comparison& comparison, size_t count) {
    return extremes(comparison, count, -1);
}

}  // namespace se_host::report
