#include "tools/se_host/measures/convergence.h"

#include <algorithm>
#include <cstddef>

namespace se_host {
namespace {

constexpr size_t kWindow = 50;  // blocks
constexpr size_t kLeastBlocks = 200;
constexpr double kEnoughDb = 20;
constexpr double kBelowFinalDb = 3;
constexpr double kLeastDb = 6;

double loweredDb(const std::vector<EchoAloneBlock>& blocks, size_t begin, size_t end) {
    return echoLoweredDb(
        {blocks.begin() + static_cast<ptrdiff_t>(begin), blocks.begin() + static_cast<ptrdiff_t>(end)});
}

}  // namespace

std::optional<Convergence> convergenceOf(const std::vector<EchoAloneBlock>& blocks) {
    if (blocks.size() < kLeastBlocks) return std::nullopt;
    const double at_the_end = loweredDb(blocks, blocks.size() / 2, blocks.size());
    if (at_the_end < kLeastDb) return std::nullopt;
    const double goal = std::min(kEnoughDb, at_the_end - kBelowFinalDb);
    std::vector<bool> reached(kWindow);
    for (size_t end = kWindow; end <= blocks.size(); ++end) {
        reached.push_back(loweredDb(blocks, end - kWindow, end) >= goal);
    }
    const auto first = std::find(reached.begin(), reached.end(), true);
    if (first == reached.end()) return std::nullopt;
    const auto before = static_cast<double>(first - reached.begin());
    reached.resize(blocks.size());
    return Convergence{before / 100, reached};
}

}  // namespace se_host
