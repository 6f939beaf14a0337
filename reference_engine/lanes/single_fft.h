// Discrete Fourier transform of one real signal, unnormalised, as RealFft: its samples are taken as eight signals, each of
// every eighth sample, whose spectra LaneFft computes at once. Threads: init [setup]; forward is rt-safe.
#pragma once

#include "reference_engine/lanes/lane_fft.h"

namespace reference_engine {

class SingleFft {
  public:
    void init(int size);  // needs: a power of two, 256 to LaneFftTables::kLargest

    // `samples`: `size`, at an address for a LaneBin; `re`, `im`: size / 2 + 1 bins.
    void forward(const float* samples, float* re, float* im);

  private:
    static constexpr int kMostPhaseBins = LaneFftTables::kLargest / kLanes / 2 + 1;

    int size_ = 0;
    LaneFft fft_;
    LaneBin turns_[kMostPhaseBins] = {};
};

}  // namespace reference_engine
