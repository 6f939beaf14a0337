// Shared fixed-point arithmetic: int16 samples, Q15 coefficients, 32-bit sums that wrap.
// Pure functions.
#pragma once

#include <algorithm>
#include <cstdint>

namespace reference_engine {

inline int16_t saturate16(int64_t value) {
    return static_cast<int16_t>(std::clamp<int64_t>(value, -32768, 32767));
}

inline int16_t saturate16(int32_t value) {
    return static_cast<int16_t>(std::clamp<int32_t>(value, -32768, 32767));
}

// To nearest, halves away from 0. Compilers vectorise it, other than std::lround.
inline int16_t sampleOf(float value) {
    const float limited = std::clamp(value, -32768.0f, 32767.0f);
    return static_cast<int16_t>(static_cast<int32_t>(limited + (limited < 0 ? -0.5f : 0.5f)));
}

inline uint32_t product(int16_t a, int16_t b) {
    return static_cast<uint32_t>(int32_t{a} * b);
}

// Sum of `taps` products, modulo 2^32. Not reversed: the first coefficient multiplies the first sample.
inline uint32_t correlate(const int16_t* coeffs, const int16_t* signal, int taps) {
    uint32_t sum = 0;
    for (int k = 0; k < taps; ++k) sum += product(coeffs[k], signal[k]);
    return sum;
}

// Q15 to integer: rounded, the rounding wrapping too, then saturated.
inline int16_t roundQ15(uint32_t sum) {
    return saturate16(static_cast<int32_t>(sum + 16384) >> 15);
}

}  // namespace reference_engine
