#include "reference_engine/audio/echo_kalman.h"

#include <algorithm>
#include <iterator>

#include "reference_engine/routines/flushed.h"

namespace reference_engine {
namespace {

constexpr float kFirstUncertainty = 0.1f;  // of the first partition: an echo path of -10 dB
constexpr float kFall =
    0.7f;  // from one partition to the next: a reverberation time of half a second or more
constexpr float kForgetting = 6e-4f;   // of the path's energy, a block: its possible change
constexpr float kLeastChange = 1e-6f;  // the same where no path is known yet
constexpr float kMismatch = 2e-4f;     // the same while the errors show an unknown path
constexpr float kNoiseMemory = 0.7f;   // a block: short, so that the estimate rises with speech at once
constexpr float kTiny = 1e-3f;         // against division by zero; samples are integers

}  // namespace

void EchoKalman::init() {
    float power = kFirstUncertainty;
    for (auto& partition : uncertainty_) {
        std::fill(std::begin(partition), std::end(partition), power);
        power *= kFall;
    }
    std::fill(std::begin(noise_), std::end(noise_), 0.0f);
    std::fill(std::begin(residual_), std::end(residual_), 0.0f);
}

// The path's energy is used as its power in every bin: the mean of the bins (Parseval).
void EchoKalman::predict(const float (&path_energy)[kPartitions], bool mismatch) {
    float appearing = mismatch ? kMismatch : kLeastChange;
    for (int p = 0; p < kPartitions; ++p) {
        for (float& power : uncertainty_[p]) power += kForgetting * (path_energy[p] - power) + appearing;
        appearing *= kFall;
    }
}

void EchoKalman::observe(const EchoSpectrum* const (&far_end)[kPartitions],
                         const float (&error_power)[kEchoBins]) {
    std::fill(std::begin(residual_), std::end(residual_), 0.0f);
    for (int p = 0; p < kPartitions; ++p) {
        const EchoSpectrum& x = *far_end[p];
        for (int k = 0; k < kEchoBins; ++k) {
            residual_[k] +=
                kShareOfFrame * uncertainty_[p][k] * (x[k].real() * x[k].real() + x[k].imag() * x[k].imag());
        }
    }
    for (int k = 0; k < kEchoBins; ++k) {
        noise_[k] = flushed(kNoiseMemory * noise_[k] + (1 - kNoiseMemory) * error_power[k]);
    }
}

void EchoKalman::learn(int partition, const EchoSpectrum& far_end, EchoSpectrum* gain) {
    float* uncertainty = uncertainty_[partition];
    for (int k = 0; k < kEchoBins; ++k) {
        const std::complex<float> x = far_end[k];
        const float step = uncertainty[k] / (residual_[k] + noise_[k] + kTiny);
        (*gain)[k] = {step * x.real(), -step * x.imag()};
        uncertainty[k] *= 1 - kShareOfFrame * step * (x.real() * x.real() + x.imag() * x.imag());
    }
}

}  // namespace reference_engine
