#include "reference_engine/audio/loudspeaker_direction.h"

#include <algorithm>
#include <iterator>
#include <numeric>

#include "reference_engine/audio/echo/echo_format.h"

namespace reference_engine {
namespace {

constexpr float kKnown = 0.3f;    // of the unknown share, from which the paths tell the direction
constexpr float kUnknown = 0.8f;  // from which they no longer do
constexpr int kPeriod = 12;       // blocks: the loudspeaker seldom moves
constexpr float kUnit = 1e6f;     // of the paths, as the transform's phases are meant for samples
constexpr float kTiny = 1e-6f;    // against division by zero

// Found by trial on loudspeakers that clip, and on talkers in the same direction: with 1 and more these are missed.
constexpr float kShare = 0.8f;
constexpr float kMuchEcho = 4;  // echo shares above one over this count as 1

constexpr int kStep = kEchoFrame / MicrophoneSpectra::kFrame;  // bins of a path for one of the search

float meanOf(const float (&powers)[kLocations]) {
    return std::accumulate(std::begin(powers), std::end(powers), 0.0f) / kLocations;
}

}  // namespace

void LoudspeakerDirection::update(const Steering& steering, const LaneBin* paths, float unknown_share) {
    if (unknown_share > kUnknown) init();
    if (unknown_share > kKnown || age_++ % kPeriod != 0) return;
    LaneBin bins[Steering::kBins];
    float weight[Steering::kBins];
    for (int k = 0; k < Steering::kBins; ++k) {
        const LaneBin& path = paths[kStep * (Steering::kFirstBin + k)];
        bins[k] = {path.re * kUnit, path.im * kUnit};
        weight[k] = 1;
    }
    steering.powers(bins, weight, powers_);
    const float mean = meanOf(powers_);
    variance_ = 0;
    for (float& power : powers_) {
        power -= mean;
        variance_ += power * power;
    }
    known_ = true;
}

int LoudspeakerDirection::location() const {
    return static_cast<int>(std::max_element(std::begin(powers_), std::end(powers_)) - powers_);
}

// As much of the loudspeaker's powers as a block contains, by least squares.
void LoudspeakerDirection::remove(float echo_share, float (&powers)[kLocations]) const {
    const float mean = meanOf(powers);
    float along = 0;
    for (int d = 0; d < kLocations; ++d) along += (powers[d] - mean) * powers_[d];
    const float contained = std::max(along, 0.0f) / (variance_ + kTiny);
    const float removed = kShare * std::min(kMuchEcho * echo_share, 1.0f) * contained;
    for (int d = 0; d < kLocations; ++d) powers[d] -= removed * powers_[d];
}

}  // namespace reference_engine
