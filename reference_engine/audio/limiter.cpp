// A feed-forward peak limiter with hold and smooth release (Giannoulis, Massberg, Reiss: Digital dynamic
// range compressor design, Journal of the Audio Engineering Society 60(6), 2012). At a peak at the very
// start of a block there are no samples for a ramp: the gain drops at once.
#include "reference_engine/audio/limiter.h"

#include <algorithm>

#include "reference_engine/routines/fixed_point.h"

namespace reference_engine {
namespace {

constexpr float kAttack = 1.0f / 32;     // of gain a sample, before a peak
constexpr int kHold = 320;               // samples; a period of 50 Hz
constexpr float kRelease = 1.0f / 1600;  // of the remaining difference, a sample: a time constant of 100 ms
constexpr float kNearUnity = 0.9999f;

// Gain that fits a sample into 16 bits.
float fittingGain(int32_t sample) {
    if (sample > 32767) return 32767.0f / static_cast<float>(sample);
    if (sample < -32768) return -32768.0f / static_cast<float>(sample);
    return 1;
}

bool allFit(const int32_t* samples) {
    int32_t largest = 0, least = 0;
    for (int i = 0; i < kBlock; ++i) {
        largest = std::max(largest, samples[i]);
        least = std::min(least, samples[i]);
    }
    return fittingGain(largest) == 1 && fittingGain(least) == 1;
}

}  // namespace

void Limiter::process(const int32_t* in, int16_t* out) {
    if (gain_ == 1 && allFit(in)) {
        hold_ = kHold;
        std::transform(in, in + kBlock, out, [](int32_t sample) { return static_cast<int16_t>(sample); });
        return;
    }
    float allowed[kBlock];
    float next = 1;
    for (int i = kBlock - 1; i >= 0; --i) {
        next = std::min(fittingGain(in[i]), next + kAttack);
        allowed[i] = next;
    }
    for (int i = 0; i < kBlock; ++i) {
        if (allowed[i] <= gain_) {
            gain_ = allowed[i];
            hold_ = kHold;
        } else if (hold_ > 0) {
            --hold_;
        } else {
            gain_ = std::min(gain_ + kRelease * (1 - gain_), allowed[i]);
            if (gain_ > kNearUnity) gain_ = 1;
        }
        out[i] = gain_ == 1 ? saturate16(in[i]) : sampleOf(static_cast<float>(in[i]) * gain_);
    }
}

}  // namespace reference_engine
