// The complex Fourier transform of the scenes' convolution and noise, in double precision. It is computed by KISS
// FFT in plain C++, compiled here, so that a scene does not depend on the processor.
#pragma once

#include <complex>
#include <cstddef>
#include <kissfft.hh>
#include <vector>

namespace se_scene {

using Spectrum = std::vector<std::complex<double>>;

// The usual product; the operator of std::complex also tests for infinities, which takes most of its time.
inline std::complex<double> product(std::complex<double> a, std::complex<double> b) {
    return {a.real() * b.real() - a.imag() * b.imag(), a.real() * b.imag() + a.imag() * b.real()};
}

// Smallest power of two that is not below `size`.
size_t powerOfTwoFrom(size_t size);

class Fft {
  public:
    // needs: above 0; powers of two are fastest.
    explicit Fft(size_t size);

    size_t size() const { return size_; }
    void forward(Spectrum& data) const;  // sum of x[n] exp(-2 pi i k n / size), unscaled
    void inverse(Spectrum& data) const;  // scaled by 1 / size: undoes forward

  private:
    size_t size_;
    kissfft<double> forward_;
    kissfft<double> inverse_;
};

}  // namespace se_scene
