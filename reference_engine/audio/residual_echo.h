// Residual echo for the noise reduction: its expected power in the blocks of errors of one frame, in the
// units of the frame's spectrum. The beam is assumed to pass it unattenuated. Threads: init [setup]; update
// [audio] rt-safe.
#pragma once

#include "reference_engine/audio/echo_format.h"
#include "reference_engine/audio/spectral_frame.h"

namespace reference_engine {

class ResidualEcho {
  public:
    void init();

    // in: expected power of the residual echo in the spectrum of this block of errors.
    void update(const float (&left)[kEchoBins]);

    // In the frame that ends with this block, one power a bin, in the units of powerOf(spectrum, bin).
    const float (&power() const)[kSpectralBins] { return power_; }

  private:
    static constexpr int kBlocks = kSpectralFrame / kBlock;
    static_assert(kBlocks == 3 && kEchoBins == kSpectralBins && kEchoFrame == kSpectralSize);

    float factor_[kSpectralBins] = {};     // from errors to the frame's spectrum
    float left_[kBlocks][kEchoBins] = {};  // the oldest first
    float power_[kSpectralBins] = {};
};

}  // namespace reference_engine
