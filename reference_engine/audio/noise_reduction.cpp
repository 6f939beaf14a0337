#include "reference_engine/audio/noise_reduction.h"

#include <algorithm>
#include <iterator>

#include "reference_engine/lanes/wide_registers.h"
#include "reference_engine/routines/fixed_point.h"

namespace reference_engine {

void NoiseReduction::init() {
    analysis_.init();
    synthesis_.init();
    floor_.init();
    gain_.init();
    comfort_noise_.init();
    line_.clear();
    bypassed_ = false;
}

// The gains as complex numbers in Q15, their imaginary parts 0.
void NoiseReduction::weigh(Spectrum& spectrum) const {
    int16_t gains[2 * kSpectralBins] = {};
    int16_t weighted[2 * kSpectralBins];
    for (int k = 0; k < kSpectralBins; ++k) {
        gains[2 * k] = static_cast<int16_t>(gain_.gain()[k] * 32767);
    }
    VCMul_i16(spectrum.values, gains, weighted, kSpectralBins);
    std::copy(std::begin(weighted), std::end(weighted), spectrum.values);
}

FOR_WIDE_REGISTERS void NoiseReduction::process(const int16_t* in, const float (&echo)[kSpectralBins],
                                                float diffuseness, const Settings& settings, int16_t* out) {
    Spectrum spectrum;
    float reduced[kBlock];
    analysis_.analyse(in, spectrum);
    float power[kSpectralBins];
    readPower(spectrum, power);
    floor_.update(spectrum, power, diffuseness);
    gain_.update(power, floor_, echo, settings);
    weigh(spectrum);
    comfort_noise_.add(static_cast<float>(settings.comfort_noise_q10) / 1024, power, floor_.power(),
                       gain_.gain(), spectrum);
    synthesis_.synthesise(spectrum, reduced);

    line_.push(in);
    const int16_t* untouched = line_.delayedBy(kSpectralDelay);
    const bool bypassed = settings.noise_reduction_bypass != 0;
    for (int i = 0; i < kBlock; ++i) {
        const float fade = static_cast<float>(i + 1) / kBlock;
        const float from = bypassed_ ? untouched[i] : reduced[i];
        const float to = bypassed ? untouched[i] : reduced[i];
        out[i] = sampleOf(from + fade * (to - from));
    }
    bypassed_ = bypassed;
}

}  // namespace reference_engine
