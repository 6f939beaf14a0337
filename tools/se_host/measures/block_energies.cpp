#include "tools/se_host/measures/block_energies.h"

#include <numeric>

#include "tools/se_host/measures/span.h"

namespace se_host {

std::vector<double> blockEnergies(const std::vector<int16_t>& samples) {
    std::vector<double> energies(samples.size() / kBlock);
    for (size_t block = 0; block < energies.size(); ++block) {
        const int16_t* const begin = samples.data() + block * kBlock;
        energies[block] = std::inner_product(begin, begin + kBlock, begin, 0.0);
    }
    return energies;
}

}  // namespace se_host
