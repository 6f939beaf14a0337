// Butterflies of any odd radix p. Rows j and p - j of the data are combined into a sum and a difference, so
// that the transform of length p becomes two real matrix products of half the size; its work grows with p
// squared and its rounding error with p as well, since cosines and sines come from a recurrence.
//
// Between the steps of a pass row j has the place of packed row j and is never reversed.
#include "webrtc_common/fftpack/general_passes.h"

#include <cmath>

namespace quill::fftpack {
namespace {

struct Turn {
    float cos;
    float sin;
};
Turn operator*(Turn a, Turn b) {
    return {a.cos * b.cos - a.sin * b.sin, a.cos * b.sin + a.sin * b.cos};
}

// Value i of a row's first group; the other groups follow.
template <class Float>
Float* split(const Stage& s, Float* data, size_t j, size_t i) {
    return data + s.groups * (s.radix * i + j);
}
template <class Float>
Float* packed(const Stage& s, Float* data, size_t j, size_t i) {
    return data + s.groups * (s.width * j + i);
}

// Factor of pair m of split row j, j and m from 1 on.
Turn twiddle(const Stage& s, size_t j, size_t m) {
    const float* const w = s.twiddles + s.width * (j - 1) + 2 * m - 2;
    return {w[0], w[1]};
}

void addScaled(float* to, float s, const float* from, size_t length) {
    for (size_t i = 0; i < length; ++i) to[i] += s * from[i];
}

// With c and s the cosine and sine of 2 pi j l / p and h = (p - 1) / 2, for every value of a row:
//   to row 0     = from row 0 + sum over j = 1 .. h of from row j
//   to row l     = from row 0 + sum over j = 1 .. h of c * from row j
//   to row p - l = sum over j = 1 .. h of s * from row (p - j)
void transformAcross(const Stage& stage, const float* from, float* to) {
    constexpr float kTwoPi = 6.28318530717958647692f;
    const size_t p = stage.radix;
    const size_t half = (p - 1) / 2;
    const size_t length = stage.width * stage.groups;
    const auto row = [length](auto* data, size_t j) { return data + length * j; };

    for (size_t i = 0; i < length; ++i) to[i] = from[i];
    for (size_t j = 1; j <= half; ++j) addScaled(to, 1.0f, row(from, j), length);

    const double angle = static_cast<double>(kTwoPi / static_cast<float>(p));
    const Turn step = {static_cast<float>(std::cos(angle)), static_cast<float>(std::sin(angle))};
    Turn first = {1.0f, 0.0f};
    for (size_t l = 1; l <= half; ++l) {
        first = step * first;
        float* const sums = row(to, l);
        float* const differences = row(to, p - l);
        for (size_t i = 0; i < length; ++i) {
            sums[i] = from[i] + first.cos * row(from, 1)[i];
            differences[i] = first.sin * row(from, p - 1)[i];
        }
        Turn turn = first;
        for (size_t j = 2; j <= half; ++j) {
            turn = first * turn;
            addScaled(sums, turn.cos, row(from, j), length);
            addScaled(differences, turn.sin, row(from, p - j), length);
        }
    }
}

// Split rows, twiddled, to sums and turned differences.
void foldForward(const Stage& s, const float* in, float* out) {
    for (size_t i = 0; i < s.width; ++i) {
        for (size_t k = 0; k < s.groups; ++k) packed(s, out, 0, i)[k] = split(s, in, 0, i)[k];
    }
    for (size_t j = 1; 2 * j < s.radix; ++j) {
        const size_t jc = s.radix - j;
        for (size_t k = 0; k < s.groups; ++k) {
            const float a = split(s, in, j, 0)[k];
            const float b = split(s, in, jc, 0)[k];
            packed(s, out, j, 0)[k] = a + b;
            packed(s, out, jc, 0)[k] = b - a;
        }
        for (size_t i = 1; i < s.width; i += 2) {
            const Turn v = twiddle(s, j, (i + 1) / 2);
            const Turn w = twiddle(s, jc, (i + 1) / 2);
            for (size_t k = 0; k < s.groups; ++k) {
                const float a_re = split(s, in, j, i)[k], a_im = split(s, in, j, i + 1)[k];
                const float b_re = split(s, in, jc, i)[k], b_im = split(s, in, jc, i + 1)[k];
                const float x_re = v.cos * a_re + v.sin * a_im, x_im = v.cos * a_im - v.sin * a_re;
                const float y_re = w.cos * b_re + w.sin * b_im, y_im = w.cos * b_im - w.sin * b_re;
                packed(s, out, j, i)[k] = x_re + y_re;
                packed(s, out, j, i + 1)[k] = x_im + y_im;
                packed(s, out, jc, i)[k] = x_im - y_im;
                packed(s, out, jc, i + 1)[k] = y_re - x_re;
            }
        }
    }
}

// Sums and differences to packed rows, the conjugate half reversed.
void packForward(const Stage& s, const float* in, float* out) {
    const size_t last = s.width - 1;
    for (size_t i = 0; i < s.width * s.groups; ++i) out[i] = in[i];
    for (size_t j = 1; 2 * j < s.radix; ++j) {
        const size_t jc = s.radix - j;
        for (size_t k = 0; k < s.groups; ++k) {
            packed(s, out, 2 * j - 1, last)[k] = packed(s, in, j, 0)[k];
            packed(s, out, 2 * j, 0)[k] = packed(s, in, jc, 0)[k];
        }
        for (size_t i = 1; i < s.width; i += 2) {
            for (size_t k = 0; k < s.groups; ++k) {
                const float a_re = packed(s, in, j, i)[k], a_im = packed(s, in, j, i + 1)[k];
                const float b_re = packed(s, in, jc, i)[k], b_im = packed(s, in, jc, i + 1)[k];
                packed(s, out, 2 * j, i)[k] = a_re + b_re;
                packed(s, out, 2 * j, i + 1)[k] = a_im + b_im;
                packed(s, out, 2 * j - 1, last - i - 1)[k] = a_re - b_re;
                packed(s, out, 2 * j - 1, last - i)[k] = b_im - a_im;
            }
        }
    }
}

// The inverse of packForward, up to a factor 2.
void unpackBackward(const Stage& s, const float* in, float* out) {
    const size_t last = s.width - 1;
    for (size_t i = 0; i < s.width * s.groups; ++i) out[i] = in[i];
    for (size_t j = 1; 2 * j < s.radix; ++j) {
        const size_t jc = s.radix - j;
        for (size_t k = 0; k < s.groups; ++k) {
            const float a = packed(s, in, 2 * j - 1, last)[k];
            const float b = packed(s, in, 2 * j, 0)[k];
            packed(s, out, j, 0)[k] = a + a;
            packed(s, out, jc, 0)[k] = b + b;
        }
        for (size_t i = 1; i < s.width; i += 2) {
            for (size_t k = 0; k < s.groups; ++k) {
                const float x_re = packed(s, in, 2 * j, i)[k], x_im = packed(s, in, 2 * j, i + 1)[k];
                const float y_re = packed(s, in, 2 * j - 1, last - i - 1)[k];
                const float y_im = packed(s, in, 2 * j - 1, last - i)[k];
                packed(s, out, j, i)[k] = x_re + y_re;
                packed(s, out, j, i + 1)[k] = x_im - y_im;
                packed(s, out, jc, i)[k] = x_re - y_re;
                packed(s, out, jc, i + 1)[k] = x_im + y_im;
            }
        }
    }
}

// The inverse of foldForward, up to a factor 2.
void unfoldBackward(const Stage& s, const float* in, float* out) {
    for (size_t i = 0; i < s.width; ++i) {
        for (size_t k = 0; k < s.groups; ++k) split(s, out, 0, i)[k] = packed(s, in, 0, i)[k];
    }
    for (size_t j = 1; 2 * j < s.radix; ++j) {
        const size_t jc = s.radix - j;
        for (size_t k = 0; k < s.groups; ++k) {
            const float sum = packed(s, in, j, 0)[k];
            const float difference = packed(s, in, jc, 0)[k];
            split(s, out, j, 0)[k] = sum - difference;
            split(s, out, jc, 0)[k] = sum + difference;
        }
        for (size_t i = 1; i < s.width; i += 2) {
            const Turn v = twiddle(s, j, (i + 1) / 2);
            const Turn w = twiddle(s, jc, (i + 1) / 2);
            for (size_t k = 0; k < s.groups; ++k) {
                const float x_re = packed(s, in, j, i)[k], x_im = packed(s, in, j, i + 1)[k];
                const float y_re = packed(s, in, jc, i)[k], y_im = packed(s, in, jc, i + 1)[k];
                const float a_re = x_re - y_im, a_im = x_im + y_re;
                const float b_re = x_re + y_im, b_im = x_im - y_re;
                split(s, out, j, i)[k] = v.cos * a_re - v.sin * a_im;
                split(s, out, j, i + 1)[k] = v.cos * a_im + v.sin * a_re;
                split(s, out, jc, i)[k] = w.cos * b_re - w.sin * b_im;
                split(s, out, jc, i + 1)[k] = w.cos * b_im + w.sin * b_re;
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

}  // namespace quill::fftpack
