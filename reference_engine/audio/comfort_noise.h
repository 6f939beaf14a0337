// Noise with the spectrum of the background, where less of the background is left than the client wants: under echo that is
// suppressed, or everywhere between words. The line does not sound dead. Threads: add [audio] rt-safe.
#pragma once

#include <cstdint>

#include "reference_engine/audio/spectral_frame.h"

namespace reference_engine {

class ComfortNoise {
  public:
    void init() { *this = ComfortNoise{}; }

    // in: `level` of the background that is wanted, 1 for all of it; power of each bin before the gain, and of the noise in it;
    // the gain. out: the spectrum after the gain, with the noise.
    void add(float level, const float (&power)[kSpectralBins], const float (&noise)[kSpectralBins],
             const float (&gain)[kSpectralBins], Spectrum& spectrum);

  private:
    uint32_t random_ = 1;
};

}  // namespace reference_engine
