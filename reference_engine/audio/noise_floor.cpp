// Gerkmann, Hendriks: Unbiased MMSE-based noise power estimation with low complexity and low tracking delay,
// IEEE Transactions on Audio, Speech and Language Processing 20(4), 2012. Every bin follows the observed
// power in proportion to the probability that it holds no speech: a smooth rule, so that the last bit of a
// spectrum does not decide. The loud moments of a crowd look like speech to a bin; that they come from no direction
// tells the difference.
#include "reference_engine/audio/noise_floor.h"

#include <algorithm>
#include <iterator>

#include "reference_engine/lanes/wide_registers.h"
#include "reference_engine/routines/flushed.h"

namespace reference_engine {
namespace {

constexpr int kFirstFrames = 12;     // whose mean is the first estimate
constexpr float kSmoothing = 0.95f;  // of the noise power: slow, so that speech does not raise it
constexpr float kPresenceSmoothing = 0.94f;
constexpr float kStuck = 0.99f;      // highest presence that lasts: the estimate never stops
constexpr float kSpeechSnr = 31.6f;  // assumed for a bin with speech: 15 dB
constexpr float kTiny = 1e-6f;       // far below the noise of a 16-bit signal
constexpr float kMostDiffuse = 0.8f;

// A distant talker in an echoing room is diffuse too. Sound that exceeds the noise by these factors of its power counts as
// speech from whichever side it comes.
constexpr float kPerhapsLoud = 3;
constexpr float kLoud = 7;
constexpr float kLevelMemory = 0.5f;
constexpr int kFirstBin = 4;  // of the level: 125 Hz

// An observed power below this, in squared units of the spectrum's last place, is mostly rounding.
constexpr float kResolution = 4.0f;

// From here on the probability of speech is 1 in single precision.
constexpr float kCertainRatio = 50.0f;

// (1 + x / 64) to the power of 64 instead of the exponential of x: as smooth, and the same on every processor.
float presenceOfSpeech(float observed, float noise) {
    const float ratio = std::min(observed / noise, kCertainRatio);
    float odds = 1 + ratio * (kSpeechSnr / (1 + kSpeechSnr) / 64);
    for (int i = 0; i < 6; ++i) odds *= odds;
    return odds / (odds + 1 + kSpeechSnr);
}

}  // namespace

// Digital silence contains no information about the noise.
FOR_WIDE_REGISTERS void NoiseFloor::update(const Spectrum& spectrum, const float (&observed)[kSpectralBins],
                                           float diffuseness) {
    const bool silent = std::all_of(std::begin(spectrum.values), std::end(spectrum.values),
                                    [](int16_t value) { return value == 0; });
    if (silent) return;
    if (frames_ < kFirstFrames) {
        start(observed);
        return;
    }
    findDiffuse(observed, diffuseness);
    const float resolution = kResolution / (spectrum.scale * spectrum.scale);
    follow(0, kDiffuseBins, observed, resolution, diffuse_);
    follow(kDiffuseBins, kSpectralBins, observed, resolution, 0);
}

void NoiseFloor::start(const float (&observed)[kSpectralBins]) {
    ++frames_;
    for (int k = 0; k < kSpectralBins; ++k) {
        power_[k] = std::max(power_[k] + (observed[k] - power_[k]) / static_cast<float>(frames_), kTiny);
    }
}

void NoiseFloor::findDiffuse(const float (&observed)[kSpectralBins], float diffuseness) {
    float level = 0, noise = 0;
    for (int k = kFirstBin; k < kDiffuseBins; ++k) {
        level += observed[k];
        noise += power_[k];
    }
    level_ = flushed(kLevelMemory * level_ + (1 - kLevelMemory) * level);
    const float quiet = std::clamp((kLoud - level_ / noise) / (kLoud - kPerhapsLoud), 0.0f, 1.0f);
    diffuse_ = diffuseness * quiet;
}

// A bin below the resolution of a loud frame only shows that its noise does not exceed that resolution.
void NoiseFloor::follow(int begin, int end, const float (&observed)[kSpectralBins], float resolution,
                        float diffuse) {
    const float trust = 1 - kMostDiffuse * diffuse;
    for (int k = begin; k < end; ++k) {
        const float known = observed[k] < resolution ? std::min(power_[k], resolution) : observed[k];
        const float present = trust * presenceOfSpeech(known, power_[k]);
        presence_[k] += (1 - kPresenceSmoothing) * (present - presence_[k]);
        const float presence = presence_[k] > kStuck ? std::min(present, kStuck) : present;
        power_[k] = std::max(power_[k] + (1 - kSmoothing) * (1 - presence) * (known - power_[k]), kTiny);
    }
}

}  // namespace reference_engine
