// What the engine's fixed-point routines and the de-interleaving must compute, one value at a time. It is
// never optimised. Each has the signature of its routine.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "webrtc_common/se_wrapper/dsp/block_size.h"

namespace quill::test {

// A sum modulo 2^32 as a rounded Q15 value.
inline int16_t roundedQ15(uint32_t sum) {
    return static_cast<int16_t>(std::clamp(static_cast<int32_t>(sum + 16384u) >> 15, -32768, 32767));
}

inline uint32_t product(int x, int y) {
    return static_cast<uint32_t>(x * y);
}

// In whole groups of four, the negative of an imaginary part of -32768 is -32768.
inline void referenceVcmul(int16_t* a, int16_t* b, int16_t* out, uint16_t n) {
    for (size_t k = 0; k < n; ++k) {
        const int ar = a[2 * k], ai = a[2 * k + 1], br = b[2 * k], bi = b[2 * k + 1];
        const bool in_fours = k < n / 4u * 4u;
        const uint32_t subtracted = in_fours && ai == -32768 ? product(-32768, bi) : 0u - product(ai, bi);
        out[2 * k] = roundedQ15(product(ar, br) + subtracted);
        out[2 * k + 1] = roundedQ15(product(ar, bi) + product(ai, br));
    }
}

inline void referenceInterpolate(uint16_t num_in, uint16_t factor, int16_t** signal, int16_t* out,
                                 int16_t* coeffs, uint16_t num_taps) {
    for (size_t j = 0; j < num_in; ++j) {
        for (size_t p = 0; p < factor; ++p) {
            uint32_t sum = 0;
            for (size_t t = 0; t < num_taps; ++t) sum += product(coeffs[p * num_taps + t], (*signal)[j + t]);
            out[j * factor + p] = roundedQ15(sum);
        }
    }
    *signal += num_in;
}

// Without decimation, multiples of eight outputs are summed modulo 2^32; all others are summed in 64 bits.
inline void referenceRFir(int16_t* signal, int16_t* coeffs, int16_t* out, uint16_t order, uint16_t num_out,
                          uint16_t step) {
    const bool wraps = num_out % 8 == 0 && step == 1;
    for (size_t i = 0; i < num_out; ++i) {
        int64_t sum = 16384;
        for (size_t k = 0; k <= order; ++k) sum += int64_t{coeffs[k]} * signal[i * step + k];
        if (wraps) sum = static_cast<int32_t>(static_cast<uint64_t>(sum) & 0xffffffffu);
        out[i] = static_cast<int16_t>(std::clamp<int64_t>(sum >> 15, -32768, 32767));
    }
}

inline void referenceDeinterleave(const int16_t* interleaved, size_t channels, int16_t* rows) {
    constexpr size_t kChannels[] = {1, 3, 2, 5, 6, 7, 4};
    constexpr size_t kFrames = media::se_wrapper::BLOCK_SIZE;
    for (size_t r = 0; r < 7; ++r) {
        for (size_t f = 0; f < kFrames; ++f) rows[r * kFrames + f] = interleaved[f * channels + kChannels[r]];
    }
}

}  // namespace quill::test
