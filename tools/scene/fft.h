// The complex Fourier transform behind the scenes' convolution and noise: radix 2, double precision. A plain
// one of our own, so that a scene is the same wherever it is made.
#pragma once

#include <complex>
#include <cstddef>
#include <vector>

namespace se_scene {

using Spectrum = std::vector<std::complex<double>>;

// The usual product; the operator of std::complex also looks for infinities, which takes most of its time.
inline std::complex<double> product(std::complex<double> a, std::complex<double> b) {
    return {a.real() * b.real() - a.imag() * b.imag(), a.real() * b.imag() + a.imag() * b.real()};
}

// Smallest power of two that is not below `size`.
size_t powerOfTwoFrom(size_t size);

class Fft {
  public:
    // needs: a power of two.
    explicit Fft(size_t size);

    size_t size() const { return reversed_.size(); }
    void forward(Spectrum& data) const;  // sum of x[n] exp(-2 pi i k n / size), unscaled
    void inverse(Spectrum& data) const;  // scaled by 1 / size: undoes forward

  private:
    std::vector<size_t> reversed_;  // bit-reversed indices
    Spectrum twiddles_;             // exp(-2 pi i k / size), k below size / 2
};

}  // namespace se_scene
