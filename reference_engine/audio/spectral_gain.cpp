// The least-squares estimate of the power of the speech in each bin (Wolfe, Godsill: Efficient alternatives to the Ephraim and
// Malah suppression rule, EURASIP Journal on Applied Signal Processing 10, 2003), with a decision-directed SNR (Ephraim,
// Malah: Speech enhancement using a minimum mean-square error short-time spectral amplitude estimator, IEEE Transactions on
// Acoustics, Speech and Signal Processing 32(6), 1984). Where the bins around one are no louder than their noise, the rule
// becomes a Wiener gain for a lower SNR: this keeps pauses free of musical noise. Two bins on either side are enough
// for a partial of a vowel; a weak consonant takes twelve. Echo and late reverberation are not as well
// known as noise: against them the rule is a Wiener gain, and it takes the whole band to tell speech.
#include "reference_engine/audio/spectral_gain.h"

#include <algorithm>
#include <cmath>

#include "reference_engine/lanes/wide_registers.h"
#include "reference_engine/routines/flushed.h"

namespace reference_engine {
namespace {

constexpr float kMemory = 0.85f;         // of the last frame's speech in the present estimate
constexpr float kLeastSnr = 0.003f;      // -25 dB
constexpr float kLeastGain = 0.2f;       // -14 dB, of noise: some of it stays, so that pauses are not silent
constexpr float kLeastEchoGain = 0.01f;  // -40 dB, of echo: it is lowered towards the noise that stays
constexpr float kTiny = 1e-6f;           // far below the noise of a 16-bit signal

constexpr float kRatioMemory = 0.5f;
constexpr float kLoudBin = 100.0f;  // largest contribution of one bin to its neighbourhood
constexpr float kPauseTrust = 0.2f;
constexpr float kPresenceDecay = 0.8f;
constexpr float kLeastWeight = 1e-3f;

// Bins on either side of one, and their mean ratio in a pause, at most, and in speech, at least.
struct Neighbourhood {
    int reach;
    float pause;
    float speech;
};
constexpr Neighbourhood kNear = {2, 2.5f, 4.0f};
constexpr Neighbourhood kWide = {12, 1.4f, 2.0f};
constexpr Neighbourhood kWholeBand = {0, 1.25f, 1.75f};

float weightOf(int16_t q10) {
    return static_cast<float>(q10) / 1024;
}

float square(float value) {
    return value * value;
}

float presenceIn(const Neighbourhood& around, float ratio) {
    return std::clamp((ratio - around.pause) / (around.speech - around.pause), 0.0f, 1.0f);
}

// in: `sums`, of the ratios of all bins before this one and of those around it; `weight` of the noise.
float presenceAround(const float* sums, const Neighbourhood& around, float weight) {
    const float bins = static_cast<float>(2 * around.reach + 1);
    return presenceIn(around, (sums[around.reach + 1] - sums[-around.reach]) / (bins * weight));
}

}  // namespace

FOR_WIDE_REGISTERS void SpectralGain::update(const float (&power)[kSpectralBins], const NoiseFloor& noise,
                                             const float (&echo)[kSpectralBins], const Settings& settings) {
    const float safety = weightOf(settings.echo_safety_factor_q10);
    const float weight = weightOf(settings.nf_weight_factor_q10);
    float residue[kSpectralBins];  // of echo and reverberation
    for (int k = 0; k < kSpectralBins; ++k)
        residue[k] = safety * echo[k] + weight * reverberation_.power()[k];
    followRatios(power, noise.power(), residue);
    findPresence(noise.diffuse(), std::max(weightOf(settings.nf_fullband_weight_factor_q10), kLeastWeight));
    for (int k = 0; k < kSpectralBins; ++k) {
        const float of_noise = weight * noise.power()[k];
        const float floor = std::max(of_noise + residue[k], kTiny);
        const float presence = presence_[k] * (1 - (1 - activity_) * residue[k] / floor);
        const float trust = kPauseTrust + (1 - kPauseTrust) * presence;
        const float excess = std::max(power[k] / floor - 1, 0.0f);
        const float snr =
            std::max(trust * (kMemory * speech_[k] / floor + (1 - kMemory) * excess), kLeastSnr);
        const float wiener = snr / (1 + snr);
        const float squared =
            std::min(wiener * (wiener + presence * of_noise / std::max(power[k], kTiny)), 1.0f);
        speech_[k] = squared * power[k];
        const float least = std::max(square(kLeastGain) * of_noise / floor, square(kLeastEchoGain));
        gain_[k] = std::sqrt(std::max(squared, least));
    }
    reverberation_.update(speech_);
}

void SpectralGain::followRatios(const float (&power)[kSpectralBins], const float (&noise)[kSpectralBins],
                                const float (&residue)[kSpectralBins]) {
    for (int k = 0; k < kSpectralBins; ++k) {
        const float ratio = std::min(power[k] / std::max(noise[k] + residue[k], kTiny), kLoudBin);
        ratio_[k] = flushed(kRatioMemory * ratio_[k] + (1 - kRatioMemory) * ratio);
    }
}

// The first and the last bin stand for those beyond them.
FOR_WIDE_REGISTERS void SpectralGain::findPresence(float diffuse, float weight) {
    constexpr int kReach = kWide.reach;
    float sums[kSpectralBins + 2 * kReach + 1];
    sums[0] = 0;
    for (int i = 0; i < kSpectralBins + 2 * kReach; ++i) {
        sums[i + 1] = sums[i] + ratio_[std::clamp(i - kReach, 0, kSpectralBins - 1)];
    }
    const float whole_band = (sums[kReach + kSpectralBins] - sums[kReach]) / (kSpectralBins * weight);
    activity_ = flushed(std::max(presenceIn(kWholeBand, whole_band), kPresenceDecay * activity_));
    for (int k = 0; k < kSpectralBins; ++k) {
        const float* here = sums + kReach + k;
        const float present =
            std::max(presenceAround(here, kNear, weight), presenceAround(here, kWide, weight));
        const float trusted = k < NoiseFloor::kDiffuseBins ? (1 - diffuse) * present : present;
        presence_[k] = flushed(std::max(trusted, kPresenceDecay * presence_[k]));
    }
}

}  // namespace reference_engine
