// Lowers stationary noise in the output of the beam former. Bypassed, it is a pure delay of the same length;
// the change is faded, and the noise is tracked all the time. Threads: init [setup]; process [audio] rt-safe.
#pragma once

#include "reference_engine/audio/comfort_noise.h"
#include "reference_engine/audio/delay_line.h"
#include "reference_engine/audio/noise_floor.h"
#include "reference_engine/audio/spectral_frame.h"
#include "reference_engine/audio/spectral_gain.h"
#include "reference_engine/settings.h"

namespace reference_engine {

class NoiseReduction {
  public:
    void init();

    // in: kBlock samples; `echo`, power of the residual echo in each bin of the frame that ends with this block, and
    // `diffuseness` of the sound in it. out: lags `in` by kSpectralDelay.
    void process(const int16_t* in, const float (&echo)[kSpectralBins], float diffuseness,
                 const Settings& settings, int16_t* out);

  private:
    void weigh(Spectrum& spectrum) const;

    SpectralAnalysis analysis_;
    SpectralSynthesis synthesis_;
    NoiseFloor floor_;
    SpectralGain gain_;
    ComfortNoise comfort_noise_;
    DelayLine<kSpectralDelay> line_;
    bool bypassed_ = false;  // at the end of the last block
};

}  // namespace reference_engine
