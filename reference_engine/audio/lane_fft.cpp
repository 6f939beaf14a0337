// Pairs of samples are the complex values of a transform of half the size, computed in radix 4 (Cooley and
// Tukey 1965; the packing of real data: Press et al., Numerical Recipes, "FFT of real functions").
#include "reference_engine/audio/lane_fft.h"

#include <cmath>

#include "reference_engine/routines/flushed.h"

namespace reference_engine {

void LaneFft::init() {
    for (int k = 0; k < kTwiddles; ++k) {
        const double angle = -2 * M_PI * k / kSize;
        cos_[k] = flushed(static_cast<float>(std::cos(angle)));
        sin_[k] = flushed(static_cast<float>(std::sin(angle)));
    }
    for (int i = 1; i < kHalf; ++i) {
        reversed_[i] = static_cast<uint8_t>(reversed_[i / 4] / 4 + i % 4 * (kHalf / 4));
    }
}

// Decimation in time, on values in reversed order of their base-4 digits.
void LaneFft::transform(Pairs* pairs) const {
    for (int span = 1; span < kHalf; span *= 4) {
        for (int start = 0; start < kHalf; start += 4 * span) {
            for (int j = 0; j < span; ++j) {
                butterfly(pairs->re + start + j, pairs->im + start + j, span, j * (kHalf / 2 / span));
            }
        }
    }
}

// Of four values at a distance of `span`; `turn`: index of the second one's twiddle.
inline void LaneFft::butterfly(Lanes* re, Lanes* im, int span, int turn) const {
    const auto turned_re = [&](int n) {
        return re[n * span] * cos_[n * turn] - im[n * span] * sin_[n * turn];
    };
    const auto turned_im = [&](int n) {
        return re[n * span] * sin_[n * turn] + im[n * span] * cos_[n * turn];
    };
    const Lanes re1 = turned_re(1), im1 = turned_im(1);
    const Lanes re2 = turned_re(2), im2 = turned_im(2);
    const Lanes re3 = turned_re(3), im3 = turned_im(3);
    const Lanes even_sum_re = re[0] + re2, even_sum_im = im[0] + im2;
    const Lanes even_gap_re = re[0] - re2, even_gap_im = im[0] - im2;
    const Lanes odd_sum_re = re1 + re3, odd_sum_im = im1 + im3;
    const Lanes odd_gap_re = im1 - im3, odd_gap_im = re3 - re1;  // times -i
    re[0] = even_sum_re + odd_sum_re;
    im[0] = even_sum_im + odd_sum_im;
    re[span] = even_gap_re + odd_gap_re;
    im[span] = even_gap_im + odd_gap_im;
    re[2 * span] = even_sum_re - odd_sum_re;
    im[2 * span] = even_sum_im - odd_sum_im;
    re[3 * span] = even_gap_re - odd_gap_re;
    im[3 * span] = even_gap_im - odd_gap_im;
}

void LaneFft::forward(const Signals& signals, Spectra* spectra) const {
    Pairs pairs;
    for (int j = 0; j < kHalf; ++j) {
        pairs.re[reversed_[j]] = signals[2 * j];
        pairs.im[reversed_[j]] = signals[2 * j + 1];
    }
    transform(&pairs);
    spectra->re[0] = pairs.re[0] + pairs.im[0];
    spectra->re[kHalf] = pairs.re[0] - pairs.im[0];
    spectra->im[0] = spectra->im[kHalf] = Lanes{};
    for (int k = 1; k < kHalf; ++k) {
        const Lanes even_re = (pairs.re[k] + pairs.re[kHalf - k]) * 0.5f;
        const Lanes even_im = (pairs.im[k] - pairs.im[kHalf - k]) * 0.5f;
        const Lanes odd_re = (pairs.im[k] + pairs.im[kHalf - k]) * 0.5f;
        const Lanes odd_im = (pairs.re[kHalf - k] - pairs.re[k]) * 0.5f;
        spectra->re[k] = even_re + odd_re * cos_[k] - odd_im * sin_[k];
        spectra->im[k] = even_im + odd_im * cos_[k] + odd_re * sin_[k];
    }
}

void LaneFft::backward(const Spectra& spectra, Signals* signals) const {
    const auto& re = spectra.re;
    const auto& im = spectra.im;
    Pairs pairs;
    // Input and output are conjugated, so that the forward butterflies compute this direction, too.
    pairs.re[0] = re[0] + re[kHalf];
    pairs.im[0] = re[kHalf] - re[0];
    for (int k = 1; k < kHalf; ++k) {
        const Lanes gap_re = re[k] - re[kHalf - k];
        const Lanes gap_im = im[k] + im[kHalf - k];
        const Lanes odd_re = gap_re * cos_[k] + gap_im * sin_[k];
        const Lanes odd_im = gap_im * cos_[k] - gap_re * sin_[k];
        pairs.re[reversed_[k]] = re[k] + re[kHalf - k] - odd_im;
        pairs.im[reversed_[k]] = im[kHalf - k] - im[k] - odd_re;
    }
    transform(&pairs);
    for (int j = 0; j < kHalf; ++j) {
        (*signals)[2 * j] = pairs.re[j];
        (*signals)[2 * j + 1] = -pairs.im[j];
    }
}

}  // namespace reference_engine
