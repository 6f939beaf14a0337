#include "tools/se_host/measures/pauses.h"

#include <algorithm>
#include <cmath>

#include "tools/se_host/measures/block_energies.h"

namespace se_host {
namespace {

constexpr size_t kMargin = 10;  // blocks on both sides
constexpr size_t kPauseShare = 10;
constexpr size_t kLeastBlocks = 10;

// Of 2 * kMargin + 1 blocks, from each block on.
std::vector<double> runningSums(const std::vector<double>& energies) {
    std::vector<double> sums;
    double sum = 0;
    for (size_t block = 0; block < energies.size(); ++block) {
        sum += energies[block];
        if (block < 2 * kMargin) continue;
        sums.push_back(sum);
        sum -= energies[block - 2 * kMargin];
    }
    return sums;
}

}  // namespace

std::vector<PauseBlock> pauseBlocks(const std::vector<int16_t>& microphone,
                                    const std::vector<int16_t>& output) {
    const std::vector<double> heard = blockEnergies(microphone);
    const std::vector<double> left = blockEnergies(output);
    std::vector<double> around = runningSums(heard);
    around.erase(around.begin(),
                 around.begin() + static_cast<ptrdiff_t>(std::min(kConvergedBlock, around.size())));
    if (around.empty()) return {};
    std::vector<double> sorted = around;
    const auto tenth = sorted.begin() + static_cast<ptrdiff_t>(sorted.size() / kPauseShare);
    std::nth_element(sorted.begin(), tenth, sorted.end());

    std::vector<PauseBlock> pauses;
    for (size_t i = 0; i < around.size(); ++i) {
        const size_t block = i + kConvergedBlock + kMargin;
        if (around[i] <= *tenth) pauses.push_back({block, heard[block], left[block]});
    }
    return pauses;
}

std::optional<double> pauseReductionDb(const std::vector<PauseBlock>& pauses, Span span) {
    double heard = 0, left = 0;
    size_t count = 0;
    for (const PauseBlock& pause : pauses) {
        if (!span.contains(pause.index)) continue;
        heard += pause.heard;
        left += pause.left;
        ++count;
    }
    if (count < kLeastBlocks || heard == 0) return std::nullopt;
    // Silence counts as a single bit, so that a ratio is finite.
    return 10 * std::log10(heard / std::max(left, 1.0));
}

}  // namespace se_host
