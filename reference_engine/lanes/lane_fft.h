// Discrete Fourier transform of eight real signals at once: the eight values of one sample, or of one bin, are
// neighbours. Unnormalised, as RealFft. Threads: init [setup]; the transforms are rt-safe, one at a time.
#pragma once

#include "reference_engine/lanes/lane_kernels.h"

namespace reference_engine {

class LaneFft {
  public:
    void init(int size);  // needs: a power of two, 32 to LaneFftTables::kLargest

    // `signals`: `size` samples, at an address for a LaneBin; `spectra`: size / 2 + 1 bins.
    void forward(const Lanes* signals, LaneBin* spectra) { laneKernels().forward(tables_, signals, spectra); }

    // The first and the last bin are taken as real.
    void backward(const LaneBin* spectra, Lanes* signals) {
        laneKernels().backward(tables_, spectra, signals);
    }

  private:
    LaneFftTables tables_;
};

}  // namespace reference_engine
