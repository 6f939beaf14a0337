// The energy of a sound in blocks of 10 ms.
#pragma once

#include <cstdint>
#include <vector>

namespace se_host {

// Sums of squares, exact: whole numbers below 2^53. A last block that is not whole is left out.
std::vector<double> blockEnergies(const std::vector<int16_t>& samples);

}  // namespace se_host
