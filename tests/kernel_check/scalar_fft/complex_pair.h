// A complex number in single precision and the few operations of the butterflies, each rounded exactly as it
// is written. No thread rules.
#pragma once

#include <cstddef>

namespace quill::test::scalar_fft {

struct Complex {
    float re;
    float im;
};

inline Complex operator+(Complex a, Complex b) {
    return {a.re + b.re, a.im + b.im};
}
inline Complex operator-(Complex a, Complex b) {
    return {a.re - b.re, a.im - b.im};
}
inline Complex operator*(float s, Complex a) {
    return {s * a.re, s * a.im};
}
inline Complex operator*(Complex w, Complex a) {
    return {w.re * a.re - w.im * a.im, w.re * a.im + w.im * a.re};
}
// conj(w) a
inline Complex timesConj(Complex w, Complex a) {
    return {w.re * a.re + w.im * a.im, w.re * a.im - w.im * a.re};
}
// a + conj(b)
inline Complex plusConj(Complex a, Complex b) {
    return {a.re + b.re, a.im - b.im};
}
// a - conj(b)
inline Complex minusConj(Complex a, Complex b) {
    return {a.re - b.re, a.im + b.im};
}
// conj(a - b)
inline Complex conjDifference(Complex a, Complex b) {
    return {a.re - b.re, b.im - a.im};
}
// -i (a - b)
inline Complex turnedDifference(Complex a, Complex b) {
    return {a.im - b.im, b.re - a.re};
}
// a + i b
inline Complex plusTurned(Complex a, Complex b) {
    return {a.re - b.im, a.im + b.re};
}
// a - i b
inline Complex minusTurned(Complex a, Complex b) {
    return {a.re + b.im, a.im - b.re};
}

}  // namespace quill::test::scalar_fft
