#include "reference_engine/audio/echo_mismatch.h"

#include <algorithm>
#include <cmath>

#include "reference_engine/routines/flushed.h"

namespace reference_engine {
namespace {

constexpr float kMemory = 0.97f;   // a block: an average over about 66 blocks
constexpr float kChance = 0.015f;  // mean coherence of as many independent blocks
constexpr float kFound = 2.3f * kChance;
constexpr float kTiny = 1e-3f;

}  // namespace

void EchoMismatch::update(const EchoSpectrum* const (&far_end)[kPartitions], const EchoSpectrum& error) {
    float coherence = 0;
    for (int p = 0; p < kPartitions; ++p) coherence = std::max(coherence, follow(p, *far_end[p], error));
    found_ = coherence > kFound;
}

// Returns the mean coherence of the bins.
float EchoMismatch::follow(int partition, const EchoSpectrum& far_end, const EchoSpectrum& error) {
    float* cross_re = cross_re_[partition];
    float* cross_im = cross_im_[partition];
    float sum = 0;
    for (int k = 0; k < kEchoBins; ++k) {
        const float x_re = far_end[k].real(), x_im = far_end[k].imag();
        const float e_re = error[k].real(), e_im = error[k].imag();
        const float to_unit =
            1 / std::sqrt((x_re * x_re + x_im * x_im) * (e_re * e_re + e_im * e_im) + kTiny);
        const float re = (x_re * e_re + x_im * e_im) * to_unit;
        const float im = (x_re * e_im - x_im * e_re) * to_unit;
        cross_re[k] = flushed(cross_re[k] + (1 - kMemory) * (re - cross_re[k]));
        cross_im[k] = flushed(cross_im[k] + (1 - kMemory) * (im - cross_im[k]));
        sum += cross_re[k] * cross_re[k] + cross_im[k] * cross_im[k];
    }
    return sum / kEchoBins;
}

}  // namespace reference_engine
