#include "reference_engine/audio/direction_track.h"

#include <algorithm>
#include <iterator>

#include "reference_engine/routines/flushed.h"

namespace reference_engine {
namespace {

// Costs of a turn, in the unit of weight * power. Found by trial on two talkers in turn, a talker that walks, and a single
// one in noise and among other voices; a third more or less of each changes little.
constexpr float kTurn = 0.16f;
constexpr float kTurnToKnown = 0.013f;
constexpr float kTurnToNext = 0.027f;
constexpr float kTurnFromLoudspeaker = 0.03f;

constexpr float kKnownShare = 0.25f;  // of the sound, from which a direction is known
constexpr float kForgetting = 0.04f;  // of the shares, in a block of full weight

float costOf(float share, bool at_loudspeaker) {
    const float cost = kTurn + (kTurnToKnown - kTurn) * std::min(1.0f, share / kKnownShare);
    return at_loudspeaker ? std::min(cost, kTurnFromLoudspeaker) : cost;
}

}  // namespace

void DirectionTrack::update(const float (&power)[kLocations], float weight, bool at_loudspeaker) {
    const float highest = *std::max_element(std::begin(power), std::end(power));
    float stayed[kLocations];
    for (int d = 0; d < kLocations; ++d) stayed[d] = score_[d] + weight * (power[d] - highest);

    location_ = static_cast<int>(std::max_element(std::begin(stayed), std::end(stayed)) - stayed);
    const float best = stayed[location_];
    for (int d = 0; d < kLocations; ++d) {
        const float next = std::max(stayed[(d + 1) % kLocations], stayed[(d + kLocations - 1) % kLocations]);
        score_[d] =
            std::max({stayed[d], best - costOf(share_[d], at_loudspeaker), next - kTurnToNext}) - best;
        const float here = d == location_ ? 1 : 0;
        share_[d] = flushed(share_[d] + kForgetting * weight * (here - share_[d]));
    }
}

}  // namespace reference_engine
