// The power of the talker's late reflections in each bin: what was let through before, with the decay of a room (Lebart, Boucher,
// Denbigh: A new method based on spectral subtraction for speech dereverberation, Acta Acustica united with Acustica 87(3),
// 2001). Threads: update [audio] rt-safe.
#pragma once

#include "reference_engine/audio/spectral_frame.h"

namespace reference_engine {

class LateReverberation {
  public:
    void init() { *this = LateReverberation{}; }

    // In the next frame, in the units of readPower.
    const float (&power() const)[kSpectralBins] { return power_; }

    // in: power of the speech in each bin of the present frame.
    void update(const float (&speech)[kSpectralBins]);

  private:
    // Blocks until a frame has no samples of the sound: what is reflected sooner supports speech.
    static constexpr int kDelay = kSpectralFrame / kBlock;

    float speech_[kDelay][kSpectralBins] = {};  // of the last frames
    float power_[kSpectralBins] = {};
    int newest_ = 0;
};

}  // namespace reference_engine
