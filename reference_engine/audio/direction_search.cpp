// The noise floor is the minimum of the smoothed power over the last 1.5 to 3 seconds (Martin: Noise power spectral
// density estimation based on optimal smoothing and minimum statistics, IEEE Transactions on Speech and Audio Processing
// 9(5), 2001), without that paper's bias correction: the threshold above it includes the bias.
#include "reference_engine/audio/direction_search.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "reference_engine/audio/geometry.h"
#include "reference_engine/lanes/lane_kernels.h"
#include "reference_engine/routines/elementary.h"
#include "reference_engine/routines/flushed.h"

namespace reference_engine {
namespace {

constexpr float kPowerSmoothing = 0.8f;  // of the old value
constexpr int kFloorBlocks = 150;        // after which the older half of the minima is dropped

// A bin counts when its power exceeds these multiples of the noise floor (a minimum, well below the mean), of the expected
// echo, of the removed echo, which comes back when its path changes, and of its own recent power: the onsets of a sound
// arrive before its reflections.
constexpr float kAboveFloor = 12.0f;
constexpr float kAboveEcho = 40.0f;
constexpr float kAboveRemoved = 2.0f;
constexpr float kAboveTail = 1.0f;

constexpr float kLeastActivity = 0.05f;              // share of such bins from which a block counts
constexpr float kAdaptation = 0.12f;                 // of the response, when every bin counts
constexpr float kMeanStep = 0.01f;                   // of the mean power, a block
constexpr float kHuge = 1e30f;                       // more than any power
constexpr float kTiny = 1e-3f;                       // against division by zero; samples are integers
constexpr float kNoDirection = 1.0f / kMicrophones;  // response of noise independent in each microphone

}  // namespace

void DirectionSearch::init() {
    for (int d = 0; d < kOpposite; ++d) {
        for (int m = 0; m < kSteered; ++m) {
            const double lead = leadOf(m + 1, azimuthOf(d));
            for (int k = 0; k < kBins; ++k) {
                const double angle =
                    -2 * M_PI * (kFirstBin + k) * kSampleRate / MicrophoneSpectra::kFrame * lead;
                steering_[k][m].re[d] = static_cast<float>(cosine(angle));
                steering_[k][m].im[d] = static_cast<float>(sine(angle));
            }
        }
    }
    std::fill(std::begin(smoothed_), std::end(smoothed_), 0.0f);
    std::fill(std::begin(least_), std::end(least_), kHuge);
    std::fill(std::begin(least_before_), std::end(least_before_), kHuge);
    floor_age_ = 0;
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
    const float activity = weighBins(spectra, echo + kFirstBin);
    const float loud = loudness(spectra);
    active_ = activity > kLeastActivity && energy >= gate;
    if (!active_) return;
    float powers[kLocations];
    findPowers(spectra, powers);
    for (int d = 0; d < kLocations; ++d) response_[d] += kAdaptation * activity * (powers[d] - response_[d]);
    track_.update(powers, activity * loud);
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

// needs: a bin whose weight is not 0.
void DirectionSearch::findPowers(const MicrophoneSpectra& spectra, float (&powers)[kLocations]) const {
    Lanes ahead, behind;
    laneKernels().steer(spectra.bins() + kFirstBin, steering_[0], weight_, kBins, &ahead, &behind);
    float weights = 0;
    for (const float weight : weight_) weights += weight;
    const float most = weights * kMicrophones * kMicrophones;
    for (int d = 0; d < kOpposite; ++d) {
        powers[d] = ahead[d] / most;
        powers[kOpposite + d] = behind[d] / most;
    }
}

}  // namespace reference_engine
