#include "tools/se_host/engine/talker.h"

#include <algorithm>
#include <map>

namespace se_host {
namespace {

constexpr double kLeastConfidence = 0.01;  // lower values are noise

struct Votes {
    size_t blocks = 0;
    double confidence = 0;
};

}  // namespace

std::optional<Talker> findTalker(const std::vector<Direction>& directions) {
    std::map<int, Votes> votes;
    for (const Direction& direction : directions) {
        Votes& of_location = votes[direction.location];
        ++of_location.blocks;
        of_location.confidence += direction.confidence / 32767.0;
    }
    const auto best = std::max_element(votes.begin(), votes.end(), [](const auto& a, const auto& b) {
        return a.second.confidence < b.second.confidence;
    });
    if (best == votes.end()) return std::nullopt;

    const auto blocks = static_cast<double>(best->second.blocks);
    const double confidence = best->second.confidence / blocks;
    if (confidence < kLeastConfidence) return std::nullopt;
    return Talker{best->first, best->first * Direction::kDegreesPerLocation,
                  blocks / static_cast<double>(directions.size()), confidence};
}

}  // namespace se_host
