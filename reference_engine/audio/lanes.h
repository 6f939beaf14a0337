// Eight numbers, one a microphone and one unused, that are computed together. They are two vector types, as
// compilers seldom vectorise such code on their own: two registers of every x86-64 processor. Pure functions,
// rt-safe.
#pragma once

#include <cstdint>

namespace reference_engine {

inline constexpr int kLanes = 8;

struct Lanes {
    typedef float Four __attribute__((vector_size(16)));

    Four low;
    Four high;

    float operator[](int lane) const { return lane < 4 ? low[lane] : high[lane - 4]; }
    void set(int lane, float value) {
        if (lane < 4) {
            low[lane] = value;
        } else {
            high[lane - 4] = value;
        }
    }
};

inline Lanes operator+(const Lanes& a, const Lanes& b) {
    return {a.low + b.low, a.high + b.high};
}
inline Lanes operator-(const Lanes& a, const Lanes& b) {
    return {a.low - b.low, a.high - b.high};
}
inline Lanes operator*(const Lanes& a, const Lanes& b) {
    return {a.low * b.low, a.high * b.high};
}
inline Lanes operator*(const Lanes& a, float b) {
    return {a.low * b, a.high * b};
}
inline Lanes operator-(const Lanes& a) {
    return {-a.low, -a.high};
}

inline Lanes larger(const Lanes& a, const Lanes& b) {
    return {a.low > b.low ? a.low : b.low, a.high > b.high ? a.high : b.high};
}
inline Lanes smaller(const Lanes& a, const Lanes& b) {
    return {a.low < b.low ? a.low : b.low, a.high < b.high ? a.high : b.high};
}
inline Lanes magnitude(const Lanes& a) {
    return larger(a, -a);
}

// Rounded to nearest, halves away from 0. needs: magnitudes up to 32767.
inline void round(const Lanes& a, int16_t (&out)[kLanes]) {
    typedef int32_t Ints __attribute__((vector_size(16)));
    typedef int16_t Shorts __attribute__((vector_size(8)));
    const Lanes::Four half = {0.5f, 0.5f, 0.5f, 0.5f};
    const Lanes::Four low = a.low + (a.low < 0 ? -half : half);
    const Lanes::Four high = a.high + (a.high < 0 ? -half : half);
    const Shorts low_out = __builtin_convertvector(__builtin_convertvector(low, Ints), Shorts);
    const Shorts high_out = __builtin_convertvector(__builtin_convertvector(high, Ints), Shorts);
    for (int lane = 0; lane < 4; ++lane) {
        out[lane] = low_out[lane];
        out[4 + lane] = high_out[lane];
    }
}

}  // namespace reference_engine
