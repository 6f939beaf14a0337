#include "tools/se_host/measures/pause_level.h"

#include <algorithm>
#include <cmath>

#include "tools/se_host/measures/block_energies.h"

namespace se_host {
namespace {

constexpr size_t kPauseShare = 10;
constexpr size_t kLeastBlocks = 5;

}  // namespace

PauseLevel::PauseLevel(const std::vector<int16_t>& samples) : energies_(blockEnergies(samples)) {
    if (energies_.size() < kPauseShare) return;
    std::vector<double> sorted = energies_;
    const auto last = sorted.begin() + static_cast<ptrdiff_t>(sorted.size() / kPauseShare - 1);
    std::nth_element(sorted.begin(), last, sorted.end());
    most_ = *last;
}

std::optional<double> PauseLevel::within(Span span) const {
    double energy = 0;
    size_t count = 0;
    for (size_t block = span.begin; block < std::min(span.end, energies_.size()); ++block) {
        if (energies_[block] > most_) continue;
        energy += energies_[block];
        ++count;
    }
    if (count < kLeastBlocks || energy == 0) return std::nullopt;
    return 10 * std::log10(energy / (static_cast<double>(count * kBlock) * 32768.0 * 32768.0));
}

}  // namespace se_host
