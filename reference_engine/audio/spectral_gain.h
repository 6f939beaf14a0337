// Gain of each bin, from its power and that of the noise in it. Threads: update [audio] rt-safe.
#pragma once

#include "reference_engine/audio/late_reverberation.h"
#include "reference_engine/audio/noise_floor.h"
#include "reference_engine/settings.h"

namespace reference_engine {

class SpectralGain {
  public:
    void init() { *this = SpectralGain{}; }

    // in: power of each bin, and of the residual echo in it.
    void update(const float (&power)[kSpectralBins], const NoiseFloor& noise,
                const float (&echo)[kSpectralBins], const Settings& settings);

    // 0 to 1.
    const float (&gain() const)[kSpectralBins] { return gain_; }

  private:
    void followRatios(const float (&power)[kSpectralBins], const float (&noise)[kSpectralBins],
                      const float (&residue)[kSpectralBins]);
    void findPresence(float diffuse, float weight);

    float gain_[kSpectralBins] = {};
    float ratio_[kSpectralBins] = {};     // of the power to noise and echo, smoothed over a few frames
    float presence_[kSpectralBins] = {};  // of speech in the neighbourhood of the bin, 0 in a pause
    float activity_ = 0;                  // of the whole band, 0 in a pause
    float speech_[kSpectralBins] = {};    // output power of the last frame
    LateReverberation reverberation_;
};

}  // namespace reference_engine
