// From samples to short-time spectra and back by overlap-add, through the DFT in the hooks. It is a 16-bit
// transform, so each frame is first scaled up to fill the 16 bits (block floating point), and a pre-emphasis
// levels the slope of speech: otherwise the rounding of strong low bins would mask weak high ones.
// Threads: init [setup]; analyse and synthesise [audio] rt-safe.
#pragma once

#include "reference_engine/engine_interface.h"
#include "reference_engine/format.h"

namespace reference_engine {

inline constexpr int kSpectralFrame = 480;  // samples; a new one each block
inline constexpr int kSpectralSize = 512;   // of the transform; the rest is zeros
inline constexpr int kSpectralBins = kSpectralSize / 2 + 1;
inline constexpr int kSpectralDelay = kSpectralFrame - kBlock;  // samples

// Of the pre-emphasis: the share of the previous sample that it subtracts.
inline constexpr float kEmphasis = 0.75f;

// Packed as the DFT writes it: real and imaginary part in turn, in units of 1 / scale.
struct Spectrum {
    int16_t values[2 * kSpectralBins];
    float scale;
};

// out: the power of each bin. The DFT halves the first and the last one.
void readPower(const Spectrum& spectrum, float (&power)[kSpectralBins]);

class SpectralAnalysis {
  public:
    void init();

    // in: kBlock samples. out: the spectrum of the last kSpectralFrame samples.
    void analyse(const int16_t* in, Spectrum& out);

  private:
    DftObj_t dft_ = {};
    float window_[kSpectralFrame] = {};
    float samples_[kSpectralFrame] = {};
    float last_ = 0;  // sample in, for the pre-emphasis
};

class SpectralSynthesis {
  public:
    void init();

    // in: the spectrum, which is overwritten. out: kBlock samples, the first of the frame.
    void synthesise(Spectrum& in, float* out);

  private:
    DftObj_t dft_ = {};
    float window_[kSpectralFrame] = {};
    float sum_[kSpectralFrame] = {};
    float last_ = 0;  // sample out, for the de-emphasis
};

}  // namespace reference_engine
