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

std::map<int, Votes> votesOf(const std::vector<Direction>& directions) {
    std::map<int, Votes> votes;
    for (const Direction& direction : directions) {
        Votes& of_location = votes[direction.location];
        ++of_location.blocks;
        of_location.confidence += direction.confidence / 32767.0;
    }
    return votes;
}

}  // namespace

std::vector<LocationShare> locationShares(const std::vector<Direction>& directions) {
    std::vector<LocationShare> shares;
    for (const auto& [location, votes] : votesOf(directions)) {
        const auto blocks = static_cast<double>(votes.blocks);
        shares.push_back({location, location * Direction::kDegreesPerLocation,
                          blocks / static_cast<double>(directions.size()), votes.confidence / blocks});
    }
    std::stable_sort(shares.begin(), shares.end(),
                     [](const LocationShare& a, const LocationShare& b) { return a.share > b.share; });
    return shares;
}

std::optional<Talker> findTalker(const std::vector<Direction>& directions) {
    const std::map<int, Votes> votes = votesOf(directions);
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
