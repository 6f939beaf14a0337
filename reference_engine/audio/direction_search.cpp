// The noise floor is the minimum of the smoothed power over the last 1.5 to 3 seconds (Martin: Noise power spectral
// density estimation based on optimal smoothing and minimum statistics, IEEE Transactions on Speech and Audio Processing
// 9(5), 2001), without that paper's bias correction: the threshold above it includes the bias.
#include "reference_engine/audio/direction_search.h"

#include <algorithm>
#include <iterator>

#include "reference_engine/routines/flushed.h"

namespace reference_engine {
namespace {

constexpr float kPowerSmoothing = 0.8f;  // of the old value
constexpr int kFirstBlocks = 4;          // until the frame of the spectra is full
constexpr int kFloorBlocks = 150;        // after which the older half of the minima is dropped

// A bin counts when its power exceeds these multiples of the noise floor (a minimum, well below the mean), of the expected
// echo, of the removed echo, which comes back when its path changes, and of its own recent power: the onsets of a sound
// arrive before its reflections.
constexpr float kAboveFloor = 5.0f;
constexpr float kAboveEcho = 40.0f;
constexpr float kAboveRemoved = 2.0f;
constexpr float kAboveTail = 1.0f;

constexpr float kMostlyEcho = 0.5f;                  // share of the removed echo in a block
constexpr float kLeastActivity = 0.01f;              // share of such bins from which a block counts
constexpr float kLeastBesideEcho = 0.05f;            // the same, of sound that may be the echo's remains
constexpr float kSomeEcho = 0.1f;                    // share of the removed echo in a block
constexpr float kAdaptation = 0.12f;                 // of the response, when every bin counts
constexpr float kMeanStep = 0.01f;                   // of the mean power, a block
constexpr float kHuge = 1e30f;                       // more than any power
constexpr float kTiny = 1e-3f;                       // against division by zero; samples are integers
constexpr float kNoDirection = 1.0f / kMicrophones;  // response of noise independent in each microphone

}  // namespace

void DirectionSearch::init() {
    steering_.init();
    loudspeaker_.init();
    blocks_ = 0;
    mean_power_ = 0;
    restart();
}

void DirectionSearch::restart() {
    std::fill(std::begin(response_), std::end(response_), kNoDirection);
    track_ = DirectionTrack{};
    active_ = false;
}

void DirectionSearch::update(const MicrophoneSpectra& spectra, const float (&echo)[MicrophoneSpectra::kBins],
                             uint64_t energy, uint64_t gate) {
    if (blocks_ < kFirstBlocks) {
        startFloor(spectra);
        return;
    }
    const float activity = weighBins(spectra, echo + kFirstBin);
    const float loud = loudness(spectra);
    const float echo_share = loudspeaker_.known() ? echoShare(spectra) : 0;
    active_ = activity > (echo_share > kSomeEcho ? kLeastBesideEcho : kLeastActivity) && energy >= gate;
    if (!active_) return;
    float powers[kLocations];
    steering_.powers(spectra.bins() + kFirstBin, weight_, powers);
    if (loudspeaker_.known()) loudspeaker_.remove(echo_share, powers);
    const bool at_loudspeaker = echo_share > kMostlyEcho && track_.location() == loudspeaker_.location();
    for (int d = 0; d < kLocations; ++d) response_[d] += kAdaptation * activity * (powers[d] - response_[d]);
    track_.update(powers, activity * loud, at_loudspeaker);
}

void DirectionSearch::startFloor(const MicrophoneSpectra& spectra) {
    ++blocks_;
    floor_age_ = 0;
    active_ = false;
    for (int k = 0; k < kBins; ++k) smoothed_[k] = spectra.meanPower(kFirstBin + k);
    std::fill(std::begin(least_), std::end(least_), kHuge);
    std::fill(std::begin(least_before_), std::end(least_before_), kHuge);
}

// Of the removed echo, in all sound of the microphones.
float DirectionSearch::echoShare(const MicrophoneSpectra& spectra) const {
    float echo = 0, clean = 0;
    for (int k = kFirstBin; k < kFirstBin + kBins; ++k) {
        echo += spectra.echoPower(k);
        clean += spectra.meanPower(k);
    }
    return echo / (echo + clean + kTiny);
}

// Returns the mean weight: the share of the band with sound above the thresholds.
float DirectionSearch::weighBins(const MicrophoneSpectra& spectra, const float* echo) {
    float sum = 0;
    for (int k = 0; k < kBins; ++k) {
        const float power = spectra.meanPower(kFirstBin + k);
        const float before = smoothed_[k];
        smoothed_[k] = std::max(kTiny, kPowerSmoothing * before + (1 - kPowerSmoothing) * power);
        least_[k] = std::min(least_[k], smoothed_[k]);
        const float floor = std::min(least_[k], least_before_[k]);
        const float removed = spectra.echoPower(kFirstBin + k);
        const float threshold = std::max(
            {kAboveFloor * floor, kAboveTail * before, kAboveEcho * echo[k], kAboveRemoved * removed});
        weight_[k] = power > threshold ? 1 - threshold / power : 0.0f;
        sum += weight_[k];
    }
    if (++floor_age_ == kFloorBlocks) {
        std::copy(std::begin(least_), std::end(least_), least_before_);
        std::copy(std::begin(smoothed_), std::end(smoothed_), least_);
        floor_age_ = 0;
    }
    return sum / kBins;
}

// The power of all bins, as a share of its sum with the mean: close to 1 for a talker after a pause, close to 0 for voices
// in the background while the talker makes a short pause.
float DirectionSearch::loudness(const MicrophoneSpectra& spectra) {
    float power = 0;
    for (int k = 0; k < kBins; ++k) power += spectra.meanPower(kFirstBin + k);
    const float share = power / (power + mean_power_ + kTiny);
    mean_power_ = flushed(mean_power_ + kMeanStep * (power - mean_power_));
    return share;
}

}  // namespace reference_engine
