// Discrete Fourier transform of eight real signals at once: the eight values of one sample, or of one bin,
// are neighbours. Unnormalised, as RealFft. Threads: init [setup]; the transforms are const and rt-safe.
#pragma once

#include "reference_engine/audio/lanes.h"

namespace reference_engine {

class LaneFft {
  public:
    static constexpr int kSize = 512;
    static constexpr int kBins = kSize / 2 + 1;

    using Signals = Lanes[kSize];
    struct Spectra {
        Lanes re[kBins];
        Lanes im[kBins];
    };

    void init();
    void forward(const Signals& signals, Spectra* spectra) const;

    // The first and the last bin are taken as real.
    void backward(const Spectra& spectra, Signals* signals) const;

  private:
    static constexpr int kHalf = kSize / 2;
    static constexpr int kTwiddles = 3 * kSize / 4;

    struct Pairs {
        Lanes re[kHalf];
        Lanes im[kHalf];
    };
    void transform(Pairs* pairs) const;
    void butterfly(Lanes* re, Lanes* im, int span, int turn) const;

    float cos_[kTwiddles] = {};  // exp(-2 pi i k / n)
    float sin_[kTwiddles] = {};
    uint8_t reversed_[kHalf] = {};
};

}  // namespace reference_engine
