// The real FFT: factors, twiddle factors and the selected transforms.
// Threads: any; the selection set-up only. It is initialised statically, so that a transform can be called before
// any code of the library has run.
#include <algorithm>
#include <cmath>

#include "webrtc_common/fftpack/fftpack.h"
#include "webrtc_common/fftpack/real_fft.h"
#include "webrtc_common/fftpack/real_fft_builds.h"

namespace quill::fftpack {
namespace {

constexpr int kFirstFactor = 2;  // place in ifac, behind n and the number of factors

// 4, 2, 3, 5, then the odd numbers: the candidate after the one at `index`.
int candidate(int index) {
    constexpr int kFirst[] = {4, 2, 3, 5};
    return index < 4 ? kFirst[index] : 2 * index - 1;
}

void factorise(int n, int* ifac) {
    int* const factors = ifac + kFirstFactor;
    int count = 0;
    int rest = n;
    for (int index = 0; rest > 1; ++index) {
        const int factor = candidate(index);
        for (; rest % factor == 0; rest /= factor) {
            factors[count++] = factor;
            if (factor == 2) std::rotate(factors, factors + count - 1, factors + count);  // to the front
        }
    }
    ifac[0] = n;
    ifac[1] = count;
}

// Every angle is a product of floats, as published; its cosine and sine are those of that float. Angles of
// higher precision would change many results in their last bits.
void fillTwiddles(int n, const int* ifac, float* twiddles) {
    constexpr float kTwoPi = 6.28318530717958647692f;
    const float unit = kTwoPi / static_cast<float>(n);
    float* row = twiddles;
    int groups = 1;
    for (int f = 0; f < ifac[1] - 1; ++f) {  // rows of width 1, behind the last factor, hold no pair
        const int radix = ifac[kFirstFactor + f];
        const int width = n / (groups * radix);
        for (int j = 1; j < radix; ++j, row += width) {
            const float step = static_cast<float>(j * groups) * unit;
            float count = 0.0f;
            for (int m = 0; m + 2 < width; m += 2) {
                count += 1.0f;
                const double angle = static_cast<double>(count * step);
                row[m] = static_cast<float>(std::cos(angle));
                row[m + 1] = static_cast<float>(std::sin(angle));
            }
        }
        groups *= radix;
    }
}

}  // namespace

const RealFftVariant kRealFftVariants[kNumRealFftVariants] = {
    {"sse41", &CPUInfo::has_sse41, forward_sse41, backward_sse41, forwardSamples_sse41,
     backwardSamples_sse41},
    {"avx", &CPUInfo::has_avx, forward_avx, backward_avx, forwardSamples_avx, backwardSamples_avx},
    {"avx2", &CPUInfo::has_avx2, forward_avx2, backward_avx2, forwardSamples_avx2, backwardSamples_avx2},
};

const RealFftVariant* g_real_fft = &kRealFftVariants[0];

void selectRealFft(const CPUInfo& cpu) {
    for (const RealFftVariant* v = kRealFftVariants + 1; v != kRealFftVariants + kNumRealFftVariants; ++v) {
        if (cpu.*v->feature) g_real_fft = v;
    }
}

}  // namespace quill::fftpack

using namespace quill::fftpack;

void __ogg_fdrffti(int n, float* wsave, int* ifac) {
    if (n <= 1) return;
    factorise(n, ifac);
    fillTwiddles(n, ifac, wsave + n);
}

void __ogg_fdrfftf(int n, float* r, float* wsave, int* ifac) {
    g_real_fft->forward(n, r, wsave, ifac);
}

void __ogg_fdrfftb(int n, float* r, float* wsave, int* ifac) {
    g_real_fft->backward(n, r, wsave, ifac);
}
