// Butterflies of any odd radix p. Rows j and p - j of the data are combined into a sum and a difference, so
// that the transform of length p becomes two real matrix products of half the size; its work grows with p
// squared and its rounding error with p as well, since cosines and sines come from a recurrence.
// Threads: any.
//
// Behind a factor that comes here only odd factors stand, so rows never have an even width.
#include <cmath>

#include "tests/kernel_check/scalar_fft/passes.h"

namespace quill::test::scalar_fft {
namespace {

void addScaled(float* to, float s, const float* from, std::size_t length) {
    for (std::size_t i = 0; i < length; ++i) to[i] += s * from[i];
}

// With c and s the cosine and sine of 2 pi j l / p and h = (p - 1) / 2, for every element of a split row:
//   to row 0     = from row 0 + sum over j = 1 .. h of from row j
//   to row l     = from row 0 + sum over j = 1 .. h of c * from row j
//   to row p - l = sum over j = 1 .. h of s * from row (p - j)
void transformAcross(const Stage& stage, const float* from, float* to) {
    constexpr float kTwoPi = 6.28318530717958647692f;
    const std::size_t p = stage.radix;
    const std::size_t half = (p - 1) / 2;
    const std::size_t length = stage.width * stage.groups;
    const auto row = [length](auto* data, std::size_t j) { return data + length * j; };

    for (std::size_t i = 0; i < length; ++i) to[i] = from[i];
    for (std::size_t j = 1; j <= half; ++j) addScaled(to, 1.0f, row(from, j), length);

    const double angle = static_cast<double>(kTwoPi / static_cast<float>(p));
    const Complex step = {static_cast<float>(std::cos(angle)), static_cast<float>(std::sin(angle))};
    Complex first = {1.0f, 0.0f};
    for (std::size_t l = 1; l <= half; ++l) {
        first = step * first;
        float* const sums = row(to, l);
        float* const differences = row(to, p - l);
        for (std::size_t i = 0; i < length; ++i) {
            sums[i] = from[i] + first.re * row(from, 1)[i];
            differences[i] = first.im * row(from, p - 1)[i];
        }
        Complex turn = first;
        for (std::size_t j = 2; j <= half; ++j) {
            turn = first * turn;
            addScaled(sums, turn.re, row(from, j), length);
            addScaled(differences, turn.im, row(from, p - j), length);
        }
    }
}

// Split rows, twiddled, to sums and turned differences.
void foldForward(const Stage& stage, const float* in, float* out) {
    for (std::size_t i = 0; i < stage.width * stage.groups; ++i) out[i] = in[i];
    for (std::size_t j = 1; 2 * j < stage.radix; ++j) {
        const std::size_t jc = stage.radix - j;
        for (std::size_t k = 0; k < stage.groups; ++k) {
            const float* const a = stage.split(in, k, j);
            const float* const b = stage.split(in, k, jc);
            float* const sums = stage.split(out, k, j);
            float* const differences = stage.split(out, k, jc);
            sums[0] = a[0] + b[0];
            differences[0] = b[0] - a[0];
            for (std::size_t m = 1; m <= stage.pairs(); ++m) {
                const Complex x = timesConj(stage.twiddle(j, m), pair(a, m));
                const Complex y = timesConj(stage.twiddle(jc, m), pair(b, m));
                putPair(sums, m, x + y);
                putPair(differences, m, turnedDifference(x, y));
            }
        }
    }
}

// Split rows to packed ones, the conjugate half reversed.
void packForward(const Stage& stage, const float* in, float* out) {
    for (std::size_t k = 0; k < stage.groups; ++k) {
        const float* const from = stage.split(in, k, 0);
        float* const to = stage.packed(out, 0, k);
        for (std::size_t i = 0; i < stage.width; ++i) to[i] = from[i];
        for (std::size_t j = 1; 2 * j < stage.radix; ++j) {
            const float* const a = stage.split(in, k, j);
            const float* const b = stage.split(in, k, stage.radix - j);
            float* const reversed = stage.packed(out, 2 * j - 1, k);
            float* const straight = stage.packed(out, 2 * j, k);
            reversed[stage.last()] = a[0];
            straight[0] = b[0];
            for (std::size_t m = 1; m <= stage.pairs(); ++m) {
                putPair(straight, m, pair(a, m) + pair(b, m));
                stage.putMirrored(reversed, m, conjDifference(pair(a, m), pair(b, m)));
            }
        }
    }
}

// packForward backwards, up to a factor 2.
void unpackBackward(const Stage& stage, const float* in, float* out) {
    for (std::size_t k = 0; k < stage.groups; ++k) {
        const float* const from = stage.packed(in, 0, k);
        float* const to = stage.split(out, k, 0);
        for (std::size_t i = 0; i < stage.width; ++i) to[i] = from[i];
        for (std::size_t j = 1; 2 * j < stage.radix; ++j) {
            const float* const reversed = stage.packed(in, 2 * j - 1, k);
            const float* const straight = stage.packed(in, 2 * j, k);
            float* const a = stage.split(out, k, j);
            float* const b = stage.split(out, k, stage.radix - j);
            a[0] = reversed[stage.last()] + reversed[stage.last()];
            b[0] = straight[0] + straight[0];
            for (std::size_t m = 1; m <= stage.pairs(); ++m) {
                putPair(a, m, plusConj(pair(straight, m), stage.mirrored(reversed, m)));
                putPair(b, m, minusConj(pair(straight, m), stage.mirrored(reversed, m)));
            }
        }
    }
}

// foldForward backwards, up to a factor 2.
void unfoldBackward(const Stage& stage, const float* in, float* out) {
    for (std::size_t i = 0; i < stage.width * stage.groups; ++i) out[i] = in[i];
    for (std::size_t j = 1; 2 * j < stage.radix; ++j) {
        const std::size_t jc = stage.radix - j;
        for (std::size_t k = 0; k < stage.groups; ++k) {
            const float* const sums = stage.split(in, k, j);
            const float* const differences = stage.split(in, k, jc);
            float* const a = stage.split(out, k, j);
            float* const b = stage.split(out, k, jc);
            a[0] = sums[0] - differences[0];
            b[0] = sums[0] + differences[0];
            for (std::size_t m = 1; m <= stage.pairs(); ++m) {
                const Complex x = pair(sums, m);
                const Complex y = pair(differences, m);
                putPair(a, m, stage.twiddle(j, m) * plusTurned(x, y));
                putPair(b, m, stage.twiddle(jc, m) * minusTurned(x, y));
            }
        }
    }
}

}  // namespace

void forwardGeneral(const Stage& stage, float* in, float* out) {
    foldForward(stage, in, out);
    transformAcross(stage, out, in);
    packForward(stage, in, out);
}

void backwardGeneral(const Stage& stage, float* in, float* out) {
    unpackBackward(stage, in, out);
    transformAcross(stage, out, in);
    unfoldBackward(stage, in, out);
}

}  // namespace quill::test::scalar_fft
