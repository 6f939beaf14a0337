// Power of the noise in each bin, tracked through speech. Threads: update [audio] rt-safe.
#pragma once

#include "reference_engine/audio/spectral_frame.h"

namespace reference_engine {

class NoiseFloor {
  public:
    void init() { *this = NoiseFloor{}; }

    // in: power of each bin of the spectrum; `diffuseness` of the sound, 0 to 1.
    void update(const Spectrum& spectrum, const float (&observed)[kSpectralBins], float diffuseness);

    // One power a bin, in the units of readPower.
    const float (&power() const)[kSpectralBins] { return power_; }

    // The share of the sound that counts as noise however loud a bin is, in the bins below kDiffuseBins: 0 to 1.
    float diffuse() const { return diffuse_; }
    static constexpr int kDiffuseBins =
        96;  // up to 3 kHz; above, speech is weak, and its consonants would count as noise

  private:
    void start(const float (&observed)[kSpectralBins]);
    void findDiffuse(const float (&observed)[kSpectralBins], float diffuseness);
    void follow(int begin, int end, const float (&observed)[kSpectralBins], float resolution, float diffuse);

    float power_[kSpectralBins] = {};
    float presence_[kSpectralBins] = {};  // of speech, smoothed probability
    float level_ = 0;                     // of the sound below kDiffuseBins, smoothed over a few frames
    float diffuse_ = 0;
    int frames_ = 0;  // of sound, up to those of the first estimate
};

}  // namespace reference_engine
