// The real FFT: factors, twiddle factors and the selected transforms. The selection is initialised statically, so that
// a transform can be called before any code of the library has run.
#include <algorithm>
#include <cmath>

#include "webrtc_common/fftpack/fftpack.h"
#include "webrtc_common/fftpack/real_fft.h"
#include "webrtc_common/fftpack/real_fft_builds.h"

namespace quill::fftpack {
namespace {

constexpr int kFirstFactor = 2;  // place in ifac, after n and the number of factors

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
    for (int f = 0; f < ifac[1] - 1; ++f) {  // rows of width 1, after the last factor, hold no pair
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

constexpr RealFftVariant kRows[] = {
#define REAL_FFT_VARIANT(name, set, feature) \
    {{name, &CPUInfo::feature}, forward_##set, backward_##set, forwardSamples_##set, backwardSamples_##set},
#include "webrtc_common/fftpack/real_fft_variant_rows.h"
};

}  // namespace

const KernelVariants<RealFftVariant> kRealFftVariants(kRows);

const RealFftVariant* g_real_fft = &kRows[0];

void selectRealFft(const CPUInfo& cpu) {
    if (const RealFftVariant* widest = widestAboveFloor(kRealFftVariants, cpu)) g_real_fft = widest;
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
