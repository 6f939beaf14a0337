// Discrete Fourier transform of real blocks whose size is a power of two, single precision, unnormalised:
// backward(forward(x)) is n times x. For the engine's own analysis and for its plain DFT routines.
// Threads: init [setup] allocates the tables; the transforms are const and rt-safe.
#pragma once

#include <complex>
#include <cstdint>
#include <vector>

namespace reference_engine {

class RealFft {
  public:
    static constexpr int kLargest = 1024;

    void init(int size);  // needs: a power of two, 4 to kLargest
    int size() const { return size_; }

    // in: size() samples; out: size() / 2 + 1 bins, the sum over j of x[j] exp(-2 pi i j k / n).
    void forward(const float* samples, std::complex<float>* bins) const;

    // in: size() / 2 + 1 bins, the first and the last taken as real; out: size() samples.
    void backward(const std::complex<float>* bins, float* samples) const;

  private:
    void transformHalf(std::complex<float>* values) const;

    int size_ = 0;
    std::vector<std::complex<float>> twiddles_;  // exp(-2 pi i k / n), k up to n / 2
    std::vector<uint16_t> reversed_;             // bit reversal of the half-size transform
};

}  // namespace reference_engine
