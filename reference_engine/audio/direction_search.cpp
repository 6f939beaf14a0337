// The noise floor is the minimum of the smoothed power over the last 1.5 to 3 seconds (Martin: Noise power spectral
// density estimation based on optimal smoothing and minimum statistics, IEEE Transactions on Speech and Audio Processing
// 9(5), 2001), without that paper's bias correction: the threshold above it includes the bias.
#include "reference_engine/audio/direction_search.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "reference_engine/audio/geometry.h"
#include "reference_engine/audio/meters.h"
#include "reference_engine/routines/flushed.h"

namespace reference_engine {
namespace {

constexpr float kPowerSmoothing = 0.8f;  // of the old value
constexpr int kFloorBlocks = 150;        // after which the older half of the minima is dropped

// A bin counts when its power exceeds these multiples of the noise floor (a minimum, well below the mean), of
// the expected echo, and of its own recent power: the onsets of a sound arrive before its reflections.
constexpr float kAboveFloor = 12.0f;
constexpr float kAboveEcho = 40.0f;
constexpr float kAboveTail = 1.0f;

constexpr float kLeastActivity = 0.05f;              // share of such bins from which a block counts
constexpr float kAdaptation = 0.12f;                 // of the response, when every bin counts
constexpr float kMeanStep = 0.01f;                   // of the mean power, a block
constexpr float kHuge = 1e30f;                       // more than any power
constexpr float kTiny = 1e-3f;                       // against division by zero; samples are integers
constexpr float kNoDirection = 1.0f / kMicrophones;  // response of noise independent in each microphone

}  // namespace

void DirectionSearch::init() {
    for (int d = 0; d < kLocations; ++d) {
        for (int m = 0; m < kMicrophones; ++m) {
            const double lead = leadOf(m, azimuthOf(d));
            for (int k = 0; k < kBins; ++k) {
                const double angle =
                    -2 * M_PI * (kFirstBin + k) * kSampleRate / MicrophoneSpectra::kFrame * lead;
                steer_re_[d][m][k] = static_cast<float>(std::cos(angle));
                steer_im_[d][m][k] = static_cast<float>(std::sin(angle));
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
    readPhases(spectra);
    const float activity = weighBins(echo + kFirstBin);
    const float loud = loudness();
    active_ = activity > kLeastActivity && energy >= gate;
    if (!active_) return;
    float powers[kLocations];
    for (int d = 0; d < kLocations; ++d) {
        powers[d] = powerFrom(d);
        response_[d] += kAdaptation * activity * (powers[d] - response_[d]);
    }
    track_.update(powers, activity * loud);
}

void DirectionSearch::readPhases(const MicrophoneSpectra& spectra) {
    for (int k = 0; k < kBins; ++k) {
        const LaneBin& bin = spectra.bin(kFirstBin + k);
        const Lanes powers = spectra.power(kFirstBin + k);
        power_[k] = 0;
        for (int m = 0; m < kMicrophones; ++m) {
            const float to_unit = 1.0f / std::sqrt(powers[m] + kTiny);
            phase_re_[m][k] = bin.re[m] * to_unit;
            phase_im_[m][k] = bin.im[m] * to_unit;
            power_[k] += powers[m] / kMicrophones;
        }
    }
}

// Returns the mean weight: the share of the band with sound above the thresholds.
float DirectionSearch::weighBins(const float* echo) {
    float sum = 0;
    for (int k = 0; k < kBins; ++k) {
        const float before = smoothed_[k];
        smoothed_[k] = std::max(kTiny, kPowerSmoothing * before + (1 - kPowerSmoothing) * power_[k]);
        least_[k] = std::min(least_[k], smoothed_[k]);
        const float floor = std::min(least_[k], least_before_[k]);
        const float threshold = std::max({kAboveFloor * floor, kAboveTail * before, kAboveEcho * echo[k]});
        weight_[k] = power_[k] > threshold ? 1 - threshold / power_[k] : 0.0f;
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
float DirectionSearch::loudness() {
    float power = 0;
    for (const float each : power_) power += each;
    const float share = power / (power + mean_power_ + kTiny);
    mean_power_ = flushed(mean_power_ + kMeanStep * (power - mean_power_));
    return share;
}

// needs: a bin whose weight is not 0.
float DirectionSearch::powerFrom(int location) const {
    float re[kBins] = {};
    float im[kBins] = {};
    for (int m = 0; m < kMicrophones; ++m) {
        const float* steer_re = steer_re_[location][m];
        const float* steer_im = steer_im_[location][m];
        for (int k = 0; k < kBins; ++k) {
            re[k] += phase_re_[m][k] * steer_re[k] - phase_im_[m][k] * steer_im[k];
            im[k] += phase_re_[m][k] * steer_im[k] + phase_im_[m][k] * steer_re[k];
        }
    }
    float power = 0;
    float weights = 0;
    for (int k = 0; k < kBins; ++k) {
        power += weight_[k] * (re[k] * re[k] + im[k] * im[k]);
        weights += weight_[k];
    }
    return power / (weights * kMicrophones * kMicrophones);
}

}  // namespace reference_engine
