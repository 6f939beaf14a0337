// A complex radix-2 transform of half the size over pairs of samples, split into the bins of the real transform
// (Cooley and Tukey 1965; the packing of real data: Press et al., Numerical Recipes, "FFT of real
// functions").
#include "reference_engine/routines/real_fft.h"

#include <cmath>
#include <utility>

#include "reference_engine/routines/elementary.h"
#include "reference_engine/routines/flushed.h"

namespace reference_engine {
namespace {

using Complex = std::complex<float>;

// Written out: the operator of the standard library tests for infinities.
Complex times(Complex a, Complex b) {
    return {a.real() * b.real() - a.imag() * b.imag(), a.real() * b.imag() + a.imag() * b.real()};
}

Complex timesI(Complex a) {
    return {-a.imag(), a.real()};
}

}  // namespace

void RealFft::init(int size) {
    size_ = size;
    const size_t half = static_cast<size_t>(size) / 2;
    twiddles_.resize(half + 1);
    for (size_t k = 0; k <= half; ++k) {
        const double angle = -2 * M_PI * static_cast<double>(k) / size;
        twiddles_[k] = {flushed(static_cast<float>(cosine(angle))), flushed(static_cast<float>(sine(angle)))};
    }
    reversed_.assign(half, 0);
    for (size_t i = 1; i < half; ++i) {
        reversed_[i] = static_cast<uint16_t>(reversed_[i / 2] / 2u + (i % 2 == 1 ? half / 2 : 0));
    }
}

// Decimation in time, on values in bit-reversed order.
void RealFft::transformHalf(Complex* values) const {
    const int half = size_ / 2;
    for (int span = 1; span < half; span *= 2) {
        const int stride = half / span;  // of the full-size table: exp(-2 pi i j / (2 span))
        for (int start = 0; start < half; start += 2 * span) {
            for (int j = 0; j < span; ++j) {
                Complex& upper = values[start + j];
                Complex& lower = values[start + j + span];
                const Complex turned =
                    times(lower, twiddles_[static_cast<size_t>(j) * static_cast<size_t>(stride)]);
                lower = upper - turned;
                upper += turned;
            }
        }
    }
}

void RealFft::forward(const float* samples, Complex* bins) const {
    const size_t half = static_cast<size_t>(size_) / 2;
    Complex pairs[kLargest / 2];
    for (size_t j = 0; j < half; ++j) pairs[reversed_[j]] = {samples[2 * j], samples[2 * j + 1]};
    transformHalf(pairs);
    bins[0] = {pairs[0].real() + pairs[0].imag(), 0};
    bins[half] = {pairs[0].real() - pairs[0].imag(), 0};
    for (size_t k = 1; k < half; ++k) {
        const Complex mirrored = std::conj(pairs[half - k]);
        const Complex even = (pairs[k] + mirrored) * 0.5f;
        const Complex odd = (pairs[k] - mirrored) * 0.5f;
        bins[k] = even - timesI(times(odd, twiddles_[k]));
    }
}

void RealFft::backward(const Complex* bins, float* samples) const {
    const size_t half = static_cast<size_t>(size_) / 2;
    Complex pairs[kLargest / 2];
    // Input and output are conjugated, so that the forward butterflies compute this direction, too.
    pairs[0] = {bins[0].real() + bins[half].real(), bins[half].real() - bins[0].real()};
    for (size_t k = 1; k < half; ++k) {
        const Complex mirrored = std::conj(bins[half - k]);
        const Complex even = bins[k] + mirrored;
        const Complex odd = times(bins[k] - mirrored, std::conj(twiddles_[k]));
        pairs[reversed_[k]] = std::conj(even + timesI(odd));
    }
    transformHalf(pairs);
    for (size_t j = 0; j < half; ++j) {
        samples[2 * j] = pairs[j].real();
        samples[2 * j + 1] = -pairs[j].imag();
    }
}

}  // namespace reference_engine
