// Gerkmann, Hendriks: Unbiased MMSE-based noise power estimation with low complexity and low tracking delay,
// IEEE Transactions on Audio, Speech and Language Processing 20(4), 2012. Every bin follows the observed
// power in proportion to the probability that it holds no speech: a smooth rule, so that the last bit of a
// spectrum does not decide.
#include "reference_engine/audio/noise_floor.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace reference_engine {
namespace {

constexpr int kFirstFrames = 12;     // whose mean is the first estimate
constexpr float kSmoothing = 0.95f;  // of the noise power: slow, so that speech does not raise it
constexpr float kPresenceSmoothing = 0.94f;
constexpr float kStuck = 0.99f;      // highest presence that lasts: the estimate never stops
constexpr float kSpeechSnr = 31.6f;  // assumed for a bin with speech: 15 dB
constexpr float kTiny = 1e-6f;       // far below the noise of a 16-bit signal

// An observed power below this, in squared units of the spectrum's last place, is mostly rounding.
constexpr float kResolution = 4.0f;

// From here on the probability of speech is 1 in single precision; the exponential of a much larger ratio would be
// a subnormal number.
constexpr float kCertainRatio = 50.0f;

float presenceOfSpeech(float observed, float noise) {
    const float ratio = std::min(observed / noise, kCertainRatio);
    return 1 / (1 + (1 + kSpeechSnr) * std::exp(-ratio * kSpeechSnr / (1 + kSpeechSnr)));
}

}  // namespace

float NoiseFloor::powerWithoutSpeech(float observed, int bin) {
    float presence = presenceOfSpeech(observed, power_[bin]);
    presence_[bin] += (1 - kPresenceSmoothing) * (presence - presence_[bin]);
    if (presence_[bin] > kStuck) presence = std::min(presence, kStuck);
    return presence * power_[bin] + (1 - presence) * observed;
}

// Digital silence contains no information about the noise. A bin below the resolution of a loud frame only
// shows that its noise does not exceed that resolution.
void NoiseFloor::update(const Spectrum& spectrum) {
    const bool silent = std::all_of(std::begin(spectrum.values), std::end(spectrum.values),
                                    [](int16_t value) { return value == 0; });
    if (silent) return;
    const bool starting = frames_ < kFirstFrames;
    if (starting) ++frames_;
    const float resolution = kResolution / (spectrum.scale * spectrum.scale);
    for (int k = 0; k < kSpectralBins; ++k) {
        const float observed = powerOf(spectrum, k);
        if (starting) {
            power_[k] += (observed - power_[k]) / static_cast<float>(frames_);
        } else {
            const float known = observed < resolution ? std::min(power_[k], resolution) : observed;
            power_[k] += (1 - kSmoothing) * (powerWithoutSpeech(known, k) - power_[k]);
        }
        power_[k] = std::max(power_[k], kTiny);
    }
}

}  // namespace reference_engine
