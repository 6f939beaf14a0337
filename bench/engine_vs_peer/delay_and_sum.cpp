#include "bench/engine_vs_peer/delay_and_sum.h"

#include <algorithm>
#include <cmath>

namespace engine_vs_peer {
namespace {

using se_scene::kChannels;
using se_scene::kMicrophones;

// A sinc under a Hann window (Laakso et al., "Splitting the unit delay", 1996).
double windowedSinc(double time, double reach) {
    if (std::abs(time) >= reach) return 0;
    if (time == 0) return 1;
    return std::sin(M_PI * time) / (M_PI * time) * (0.5 + 0.5 * std::cos(M_PI * time / reach));
}

}  // namespace

void DelayAndSum::steer(const se_scene::Point& talker) {
    const double to_centre = length(talker - microphones_[0]);
    for (size_t m = 0; m < kMicrophones; ++m) {
        const double lead = (to_centre - length(talker - microphones_[m])) * se_scene::kSamplesPerMetre;
        const double delay = kTaps / 2 + lead;
        for (size_t k = 0; k < kTaps; ++k) {
            const double age = static_cast<double>(kTaps - 1 - k);
            taps_[m][k] = static_cast<float>(windowedSinc(age - delay, kTaps / 2) / kMicrophones);
        }
    }
}

void DelayAndSum::process(const int16_t* interleaved, int16_t* out) {
    float sums[kBlock] = {};
    for (size_t m = 0; m < kMicrophones; ++m) {
        float* const samples = samples_[m];
        std::copy_n(samples + kBlock, kHistory, samples);
        const int16_t* channel = interleaved + se_scene::kChannelOfMicrophone[m];
        for (size_t i = 0; i < kBlock; ++i) samples[kHistory + i] = channel[i * kChannels];
        for (size_t k = 0; k < kTaps; ++k) {
            for (size_t i = 0; i < kBlock; ++i) sums[i] += taps_[m][k] * samples[i + k];
        }
    }
    for (size_t i = 0; i < kBlock; ++i) {
        out[i] = static_cast<int16_t>(std::lrint(std::clamp(sums[i], -32768.0f, 32767.0f)));
    }
}

}  // namespace engine_vs_peer
