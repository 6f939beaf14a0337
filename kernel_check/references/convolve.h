// What the correlation kernels must compute, one output at a time, with every sum modulo 2^32. It is never
// optimised.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace quill::test {

// The number of outputs that the kernels compute for a requested number: a multiple of eight, at least eight.
inline size_t wholeEights(int count) {
    const int64_t eights = (int64_t{count} + 7) / 8;
    return 8 * static_cast<size_t>(std::max<int64_t>(1, eights));
}

// The number of samples that the kernels may read, from the first on.
inline size_t signalExtent(int num_out, int num_taps) {
    return wholeEights(num_out) + wholeEights(num_taps);
}

inline uint32_t referenceSum(const int16_t* coeffs, const int16_t* signal, int num_taps) {
    uint32_t sum = 0;
    for (size_t k = 0; k < wholeEights(num_taps); ++k) {
        sum += static_cast<uint32_t>(int32_t{coeffs[k]} * int32_t{signal[k]});
    }
    return sum;
}

inline void referenceConvolve(const int16_t* coeffs, const int16_t* signal, int16_t* out, int num_out,
                              int num_taps) {
    for (size_t i = 0; i < wholeEights(num_out); ++i) {
        const auto rounded = static_cast<int32_t>(referenceSum(coeffs, signal + i, num_taps) + 16384u);
        out[i] = static_cast<int16_t>(std::clamp(rounded >> 15, -32768, 32767));
    }
}

// Both shifts 0 to 31.
inline void referenceConvolve(const int16_t* coeffs, const int16_t* signal, int32_t* out, int shift_right,
                              int num_out, int num_taps, int shift_left) {
    const uint32_t rounding = shift_right == 0 ? 0 : 1u << (shift_right - 1);
    for (size_t i = 0; i < wholeEights(num_out); ++i) {
        const auto sum = static_cast<int32_t>(referenceSum(coeffs, signal + i, num_taps) + rounding);
        out[i] = static_cast<int32_t>(static_cast<uint32_t>(sum >> shift_right) << shift_left);
    }
}

}  // namespace quill::test
