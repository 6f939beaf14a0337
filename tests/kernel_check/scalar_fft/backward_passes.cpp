// Backward butterflies of radix 2, 3 and 4. The order of every sum is the published one: results are compared
// bit by bit.
// Threads: any.
#include "tests/kernel_check/scalar_fft/passes.h"

namespace quill::test::scalar_fft {

void backward2(const Stage& stage, float* in, float* out) {
    for (std::size_t k = 0; k < stage.groups; ++k) {
        const float* const row0 = stage.packed(in, 0, k);
        const float* const row1 = stage.packed(in, 1, k);
        float* const a = stage.split(out, k, 0);
        float* const b = stage.split(out, k, 1);
        a[0] = row0[0] + row1[stage.last()];
        b[0] = row0[0] - row1[stage.last()];
        for (std::size_t m = 1; m <= stage.pairs(); ++m) {
            const Complex x = pair(row0, m);
            const Complex y = stage.mirrored(row1, m);
            putPair(a, m, plusConj(x, y));
            putPair(b, m, stage.twiddle(1, m) * minusConj(x, y));
        }
        if (stage.evenWidth()) {
            const std::size_t e = stage.last();
            a[e] = row0[e] + row0[e];
            b[e] = -(row1[0] + row1[0]);
        }
    }
}

// Behind a factor 3 only odd factors stand, so its rows never have an even width.
void backward3(const Stage& stage, float* in, float* out) {
    constexpr float kCos120 = -0.5f;
    constexpr float kSin120 = 0.86602540378443864676f;
    for (std::size_t k = 0; k < stage.groups; ++k) {
        const float* const row0 = stage.packed(in, 0, k);
        const float* const row1 = stage.packed(in, 1, k);
        const float* const row2 = stage.packed(in, 2, k);
        float* const a = stage.split(out, k, 0);
        float* const b = stage.split(out, k, 1);
        float* const c = stage.split(out, k, 2);
        const float sum = row1[stage.last()] + row1[stage.last()];
        const float re = row0[0] + kCos120 * sum;
        const float im = kSin120 * (row2[0] + row2[0]);
        a[0] = row0[0] + sum;
        b[0] = re - im;
        c[0] = re + im;
        for (std::size_t m = 1; m <= stage.pairs(); ++m) {
            const Complex x = pair(row0, m);
            const Complex y = pair(row2, m);
            const Complex z = stage.mirrored(row1, m);
            const Complex straight = x + kCos120 * plusConj(y, z);
            const Complex across = kSin120 * minusConj(y, z);
            putPair(a, m, x + plusConj(y, z));
            putPair(b, m, stage.twiddle(1, m) * plusTurned(straight, across));
            putPair(c, m, stage.twiddle(2, m) * minusTurned(straight, across));
        }
    }
}

void backward4(const Stage& stage, float* in, float* out) {
    constexpr float kSqrt2 = 1.41421356237309504880f;
    for (std::size_t k = 0; k < stage.groups; ++k) {
        const float* const row0 = stage.packed(in, 0, k);
        const float* const row1 = stage.packed(in, 1, k);
        const float* const row2 = stage.packed(in, 2, k);
        const float* const row3 = stage.packed(in, 3, k);
        float* const a = stage.split(out, k, 0);
        float* const b = stage.split(out, k, 1);
        float* const c = stage.split(out, k, 2);
        float* const d = stage.split(out, k, 3);
        const std::size_t e = stage.last();
        const float difference = row0[0] - row3[e];
        const float sum = row0[0] + row3[e];
        const float re = row1[e] + row1[e];
        const float im = row2[0] + row2[0];
        a[0] = sum + re;
        b[0] = difference - im;
        c[0] = sum - re;
        d[0] = difference + im;
        for (std::size_t m = 1; m <= stage.pairs(); ++m) {
            const Complex x = pair(row0, m);
            const Complex y = stage.mirrored(row1, m);
            const Complex z = pair(row2, m);
            const Complex u = stage.mirrored(row3, m);
            putPair(a, m, plusConj(x, u) + plusConj(z, y));
            putPair(b, m, stage.twiddle(1, m) * plusTurned(minusConj(x, u), minusConj(z, y)));
            putPair(c, m, stage.twiddle(2, m) * (plusConj(x, u) - plusConj(z, y)));
            putPair(d, m, stage.twiddle(3, m) * minusTurned(minusConj(x, u), minusConj(z, y)));
        }
        if (stage.evenWidth()) {
            const float straight = row0[e] - row2[e];
            const float across = row1[0] + row3[0];
            const float half0 = row0[e] + row2[e];
            const float half2 = row3[0] - row1[0];
            a[e] = half0 + half0;
            b[e] = kSqrt2 * (straight - across);
            c[e] = half2 + half2;
            d[e] = -kSqrt2 * (straight + across);
        }
    }
}

}  // namespace quill::test::scalar_fft
