// Gain of each bin, from its power and that of the noise in it. Threads: update [audio] rt-safe.
#pragma once

#include "reference_engine/audio/spectral_frame.h"
#include "reference_engine/settings.h"

namespace reference_engine {

class SpectralGain {
  public:
    void init() { *this = SpectralGain{}; }

    // in: power of the noise and of the residual echo in each bin.
    void update(const Spectrum& spectrum, const float (&noise)[kSpectralBins],
                const float (&echo)[kSpectralBins], const Settings& settings);

    // 0 to 1.
    const float (&gain() const)[kSpectralBins] { return gain_; }

  private:
    float gain_[kSpectralBins] = {};
    float speech_[kSpectralBins] = {};  // output power of the last frame
    float activity_ = 0;                // of the whole band, 0 in a pause
};

}  // namespace reference_engine
