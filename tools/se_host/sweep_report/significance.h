// How likely a mean difference is by chance, and what is left of it when many comparisons are made.
#pragma once

#include <vector>

namespace se_host::report {

// Student's paired test, two-sided: the probability of a mean at least as far from 0 when the true one is 0; 1 with less than
// two differences.
double probabilityByChance(const std::vector<double>& differences);

// Each probability, made larger so that with all of them together one below 0.05 is by chance in one sweep of twenty at
// most (Holm: "A simple sequentially rejective multiple test procedure", Scandinavian Journal of Statistics 6, 1979).
std::vector<double> correctedByHolm(const std::vector<double>& probabilities);

}  // namespace se_host::report
