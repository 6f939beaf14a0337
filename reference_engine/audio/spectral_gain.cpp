// Wiener gain from a decision-directed estimate of the speech in each bin (Ephraim, Malah: Speech enhancement
// using a minimum mean-square error short-time spectral amplitude estimator, IEEE Transactions on Acoustics,
// Speech and Signal Processing 32(6), 1984). While the whole band is no louder than its noise, single
// bins are trusted less: this keeps pauses free of musical noise.
#include "reference_engine/audio/spectral_gain.h"

#include <algorithm>
#include <cmath>

#include "reference_engine/routines/flushed.h"

namespace reference_engine {
namespace {

constexpr float kMemory = 0.88f;       // of the last frame's speech in the present estimate
constexpr float kLeastSnr = 0.003f;    // -25 dB
constexpr float kLeastGain = 0.126f;   // -18 dB: some noise stays, so that pauses are not silent
constexpr float kTiny = 1e-6f;         // far below the noise of a 16-bit signal
constexpr float kLoudBin = 100.0f;     // largest contribution of one bin to the whole band
constexpr float kPauseRatio = 1.25f;   // of the whole band to its noise: at most this in a pause
constexpr float kSpeechRatio = 1.75f;  // at least this in speech
constexpr float kPauseTrust = 0.2f;    // in single bins
constexpr float kActivityDecay = 0.8f;

float weightOf(int16_t q10) {
    return static_cast<float>(q10) / 1024;
}

}  // namespace

void SpectralGain::update(const Spectrum& spectrum, const float (&noise)[kSpectralBins],
                          const float (&echo)[kSpectralBins], const Settings& settings) {
    const float safety = weightOf(settings.echo_safety_factor_q10);
    const float weight = weightOf(settings.nf_weight_factor_q10);
    const float fullband_weight = weightOf(settings.nf_fullband_weight_factor_q10);
    float power[kSpectralBins];
    float ratios = 0;
    for (int k = 0; k < kSpectralBins; ++k) {
        power[k] = powerOf(spectrum, k);
        ratios += std::min(power[k] / std::max(noise[k] + safety * echo[k], kTiny), kLoudBin);
    }
    const float ratio = ratios / (kSpectralBins * std::max(fullband_weight, 1e-3f));
    const float active = std::clamp((ratio - kPauseRatio) / (kSpeechRatio - kPauseRatio), 0.0f, 1.0f);
    activity_ = flushed(std::max(active, kActivityDecay * activity_));
    const float trust = kPauseTrust + (1 - kPauseTrust) * activity_;

    for (int k = 0; k < kSpectralBins; ++k) {
        const float floor = std::max(weight * noise[k] + safety * echo[k], kTiny);
        const float excess = std::max(power[k] / floor - 1, 0.0f);
        const float snr = trust * (kMemory * speech_[k] / floor + (1 - kMemory) * excess);
        const float wiener = std::max(snr, kLeastSnr) / (1 + std::max(snr, kLeastSnr));
        speech_[k] = wiener * wiener * power[k];
        gain_[k] = std::max(wiener, kLeastGain);
    }
}

}  // namespace reference_engine
