// Forward butterflies of radix 2 and 4. The order of every sum is the published one: results are compared bit
// by bit.
// Threads: any.
#include "tests/kernel_check/scalar_fft/passes.h"

namespace quill::test::scalar_fft {

void forward2(const Stage& stage, float* in, float* out) {
    for (std::size_t k = 0; k < stage.groups; ++k) {
        const float* const a = stage.split(in, k, 0);
        const float* const b = stage.split(in, k, 1);
        float* const row0 = stage.packed(out, 0, k);
        float* const row1 = stage.packed(out, 1, k);
        row0[0] = a[0] + b[0];
        row1[stage.last()] = a[0] - b[0];
        for (std::size_t m = 1; m <= stage.pairs(); ++m) {
            const Complex x = pair(a, m);
            const Complex y = timesConj(stage.twiddle(1, m), pair(b, m));
            putPair(row0, m, x + y);
            stage.putMirrored(row1, m, conjDifference(x, y));
        }
        if (stage.evenWidth()) {
            row0[stage.last()] = a[stage.last()];
            row1[0] = -b[stage.last()];
        }
    }
}

void forward4(const Stage& stage, float* in, float* out) {
    constexpr float kHalfSqrt2 = 0.70710678118654752440f;
    for (std::size_t k = 0; k < stage.groups; ++k) {
        const float* const a = stage.split(in, k, 0);
        const float* const b = stage.split(in, k, 1);
        const float* const c = stage.split(in, k, 2);
        const float* const d = stage.split(in, k, 3);
        float* const row0 = stage.packed(out, 0, k);
        float* const row1 = stage.packed(out, 1, k);
        float* const row2 = stage.packed(out, 2, k);
        float* const row3 = stage.packed(out, 3, k);
        const float even = a[0] + c[0];
        const float odd = b[0] + d[0];
        row0[0] = odd + even;
        row1[stage.last()] = a[0] - c[0];
        row2[0] = d[0] - b[0];
        row3[stage.last()] = even - odd;
        for (std::size_t m = 1; m <= stage.pairs(); ++m) {
            const Complex x = pair(a, m);
            const Complex y = timesConj(stage.twiddle(1, m), pair(b, m));
            const Complex z = timesConj(stage.twiddle(2, m), pair(c, m));
            const Complex u = timesConj(stage.twiddle(3, m), pair(d, m));
            const Complex turned = turnedDifference(y, u);
            putPair(row0, m, (y + u) + (x + z));
            stage.putMirrored(row1, m, conjDifference(x - z, turned));
            putPair(row2, m, turned + (x - z));
            stage.putMirrored(row3, m, conjDifference(x + z, y + u));
        }
        if (stage.evenWidth()) {
            const std::size_t e = stage.last();
            const float im = -kHalfSqrt2 * (b[e] + d[e]);
            const float re = kHalfSqrt2 * (b[e] - d[e]);
            row0[e] = re + a[e];
            row1[0] = im - c[e];
            row2[e] = a[e] - re;
            row3[0] = im + c[e];
        }
    }
}

}  // namespace quill::test::scalar_fft
