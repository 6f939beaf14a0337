// Power of the stationary noise in each bin, tracked through speech. Threads: update [audio] rt-safe.
#pragma once

#include "reference_engine/audio/spectral_frame.h"

namespace reference_engine {

class NoiseFloor {
  public:
    void init() { *this = NoiseFloor{}; }
    void update(const Spectrum& spectrum);

    // One power a bin, in the units of powerOf(spectrum, bin).
    const float (&power() const)[kSpectralBins] { return power_; }

  private:
    float powerWithoutSpeech(float observed, int bin);

    float power_[kSpectralBins] = {};
    float presence_[kSpectralBins] = {};  // of speech, smoothed probability
    int frames_ = 0;                      // of sound, up to those of the first estimate
};

}  // namespace reference_engine
