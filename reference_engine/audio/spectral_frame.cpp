#include "reference_engine/audio/spectral_frame.h"

#include <algorithm>
#include <cmath>

#include "reference_engine/lanes/wide_registers.h"
#include "reference_engine/routines/elementary.h"
#include "reference_engine/routines/fixed_point.h"
#include "reference_engine/routines/flushed.h"

namespace reference_engine {
namespace {

constexpr uint16_t kDataAtStart = 3;  // forward, with zeros behind the data
constexpr uint16_t kInverse = 4;
constexpr uint16_t kUnity = 1024;

// Half the scale in the inverse transform: a filtered frame may have a higher peak than its input.
constexpr uint16_t kHeadroom = 512;
constexpr float kUndoHeadroom = 2;

// Square root of a Hann window: applied twice, the overlapping frames add up to a constant.
void designWindow(float gain, float (&window)[kSpectralFrame]) {
    for (int i = 0; i < kSpectralFrame; ++i) {
        window[i] = gain * static_cast<float>(sine(M_PI * (i + 0.5) / kSpectralFrame));
    }
}

// A power of two that brings `peak` between half and full scale; 1 for silence.
float scaleFor(float peak) {
    if (peak == 0) return 1;
    int exponent = 0;
    std::frexp(peak, &exponent);
    return std::ldexp(1.0f, 15 - exponent);
}

}  // namespace

void readPower(const Spectrum& spectrum, float (&power)[kSpectralBins]) {
    const float to_power = 1 / (spectrum.scale * spectrum.scale);
    for (int k = 0; k < kSpectralBins; ++k) {
        const float re = spectrum.values[2 * k];
        const float im = spectrum.values[2 * k + 1];
        power[k] = (re * re + im * im) * to_power;
    }
}

void SpectralAnalysis::init() {
    *this = SpectralAnalysis{};
    InitDftFcnHook(&dft_, kSpectralSize, kSpectralFrame);
    designWindow(1, window_);
}

FOR_WIDE_REGISTERS void SpectralAnalysis::analyse(const int16_t* in, Spectrum& out) {
    std::copy(samples_ + kBlock, samples_ + kSpectralFrame, samples_);
    for (int i = 0; i < kBlock; ++i) {
        samples_[kSpectralDelay + i] = in[i] - kEmphasis * last_;
        last_ = in[i];
    }
    float frame[kSpectralFrame];
    float peak = 0;
    for (int i = 0; i < kSpectralFrame; ++i) {
        frame[i] = samples_[i] * window_[i];
        peak = std::max(peak, std::abs(frame[i]));
    }
    out.scale = scaleFor(peak);
    int16_t scaled[kSpectralSize];
    for (int i = 0; i < kSpectralFrame; ++i) scaled[i] = sampleOf(frame[i] * out.scale);
    FwdDftFcnHook(&dft_, scaled, kDataAtStart, kUnity, out.values, kSpectralSize + 2);
}

void SpectralSynthesis::init() {
    *this = SpectralSynthesis{};
    InitDftFcnHook(&dft_, kSpectralSize, kSpectralFrame);
    // The sum of the squared windows that overlap at a sample.
    constexpr float kOverlapSum = 0.5f * kSpectralFrame / kBlock;
    designWindow(kUndoHeadroom / kOverlapSum, window_);
}

FOR_WIDE_REGISTERS void SpectralSynthesis::synthesise(Spectrum& in, float* out) {
    int16_t frame[kSpectralSize];
    InvDftFcnHook(&dft_, in.values, kInverse, kHeadroom, frame, kSpectralSize);
    const float unscale = 1 / in.scale;
    for (int i = 0; i < kSpectralFrame; ++i) sum_[i] += frame[i] * window_[i] * unscale;
    for (int i = 0; i < kBlock; ++i) {
        last_ = flushed(sum_[i] + kEmphasis * last_);
        out[i] = last_;
    }
    std::copy(sum_ + kBlock, sum_ + kSpectralFrame, sum_);
    std::fill(sum_ + kSpectralDelay, sum_ + kSpectralFrame, 0.0f);
}

}  // namespace reference_engine
