// The wrapper's real Fourier transform for one length, with its tables.
// Threads: one.
#pragma once

#include <complex>
#include <vector>

namespace se_host {

class RealTransform {
  public:
    explicit RealTransform(int size);

    int size() const { return size_; }

    // in: `size` samples. result: the bins 0 to size / 2.
    std::vector<std::complex<float>> forward(std::vector<float> samples);

    // The reverse, times `size`.
    std::vector<float> backward(const std::vector<std::complex<float>>& bins);

  private:
    int size_;
    std::vector<float> tables_;
    std::vector<int> factors_;
};

}  // namespace se_host
