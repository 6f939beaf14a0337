// The body of the correlation kernels, included by one source file an instruction set. Nothing here may be
// shared between source files: no name with external linkage, nothing from the standard library, everything
// inlined. Else the linker might keep the copy built for one processor and give it to another.
//
// Outputs stand in lanes. The eight samples loaded at offset k are four pairs, each of which contributes to
// one even output of a block, those at k + 1 to the odd outputs, both multiplied by the same pair of taps.
// The samples at offset k + 8 m serve tap pair k + 8 s of block m - s, so several blocks and two steps
// together need far less than one load a multiplication. Sums modulo 2^32 may be taken in any order.
#pragma once

#include <immintrin.h>
#include <stddef.h>
#include <stdint.h>

#define CONVOLVE_INLINE inline __attribute__((always_inline))
#define CONVOLVE_UNROLL _Pragma("GCC unroll 8")  // at every optimisation level: sums live in registers

namespace {

// Running sums of a block: even outputs 0 2 4 6, odd outputs 1 3 5 7.
struct Sums {
    __m128i even;
    __m128i odd;
};

CONVOLVE_INLINE __m128i load(const int16_t* p) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
}

template <class T>
CONVOLVE_INLINE void store(T* p, __m128i v) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(p), v);
}

CONVOLVE_INLINE void multiplyAdd(Sums& sums, __m128i even, __m128i odd, __m128i taps) {
    sums.even = _mm_add_epi32(sums.even, _mm_madd_epi16(even, taps));
    sums.odd = _mm_add_epi32(sums.odd, _mm_madd_epi16(odd, taps));
    // Keeps the order of the additions: rearranged into a tree they need more registers than there are.
    __asm__("" : "+x"(sums.even), "+x"(sums.odd));
}

// Tap pair kPair of each of kSteps adjoining steps, for kBlocks adjoining blocks.
template <int kPair, size_t kBlocks, size_t kSteps>
CONVOLVE_INLINE void addPair(Sums (&sums)[kBlocks], const __m128i (&steps)[kSteps], const int16_t* signal) {
    __m128i taps[kSteps];
    CONVOLVE_UNROLL for (size_t s = 0; s < kSteps; ++s) taps[s] = _mm_shuffle_epi32(steps[s], kPair * 0x55);
    CONVOLVE_UNROLL for (size_t m = 0; m < kBlocks + kSteps - 1; ++m) {
        const __m128i even = load(signal + 8 * m + 2 * kPair);
        const __m128i odd = load(signal + 8 * m + 2 * kPair + 1);
        CONVOLVE_UNROLL for (size_t s = 0; s < kSteps; ++s) {
            if (s <= m && m < s + kBlocks) multiplyAdd(sums[m - s], even, odd, taps[s]);
        }
    }
}

template <size_t kSteps, size_t kBlocks>
CONVOLVE_INLINE void addSteps(Sums (&sums)[kBlocks], const int16_t* coeffs, const int16_t* signal) {
    __m128i steps[kSteps];
    CONVOLVE_UNROLL for (size_t s = 0; s < kSteps; ++s) steps[s] = load(coeffs + 8 * s);
    addPair<0>(sums, steps, signal);
    addPair<1>(sums, steps, signal);
    addPair<2>(sums, steps, signal);
    addPair<3>(sums, steps, signal);
}

// kBlocks adjoining blocks from their first tap to their last, handed to `output`.
template <size_t kBlocks, class Output>
CONVOLVE_INLINE void convolveBlocks(const int16_t* coeffs, const int16_t* signal, ptrdiff_t steps,
                                    ptrdiff_t first_block, const Output& output) {
    Sums sums[kBlocks];
    CONVOLVE_UNROLL for (size_t m = 0; m < kBlocks; ++m) sums[m].even = sums[m].odd = _mm_setzero_si128();
    signal += 8 * first_block;
    ptrdiff_t s = 0;
    for (; s + 2 <= steps; s += 2) addSteps<2>(sums, coeffs + 8 * s, signal + 8 * s);
    if (s < steps) addSteps<1>(sums, coeffs + 8 * s, signal + 8 * s);
    CONVOLVE_UNROLL for (size_t m = 0; m < kBlocks; ++m) {
        output.put(8 * (first_block + static_cast<ptrdiff_t>(m)),
                   _mm_unpacklo_epi32(sums[m].even, sums[m].odd),
                   _mm_unpackhi_epi32(sums[m].even, sums[m].odd));
    }
}

// Eights that `count` needs, at least one.
CONVOLVE_INLINE ptrdiff_t eights(ptrdiff_t count) {
    return count > 8 ? (count + 7) / 8 : 1;
}

template <class Output>
CONVOLVE_INLINE void convolve(const int16_t* coeffs, const int16_t* signal, int num_out, int num_taps,
                              const Output& output) {
    const ptrdiff_t blocks = eights(num_out);
    const ptrdiff_t steps = eights(num_taps);
    ptrdiff_t b = 0;
    for (; b + 4 <= blocks; b += 4) convolveBlocks<4>(coeffs, signal, steps, b, output);
    for (; b < blocks; ++b) convolveBlocks<1>(coeffs, signal, steps, b, output);
}

// Rounded Q15 values, narrowed with saturation.
struct NarrowedOutput {
    int16_t* out;

    static CONVOLVE_INLINE __m128i rounded(__m128i acc) {
        return _mm_srai_epi32(_mm_add_epi32(acc, _mm_set1_epi32(1 << 14)), 15);
    }
    CONVOLVE_INLINE void put(ptrdiff_t i, __m128i low, __m128i high) const {
        store(out + i, _mm_packs_epi32(rounded(low), rounded(high)));
    }
};

// Rounded values, shifted right and left. The vector shifts give 0 for a count above 31, -1 included, which
// is just what the rounding term of a right shift by 0 must be.
struct ShiftedOutput {
    int32_t* out;
    __m128i rounding, right, left;

    CONVOLVE_INLINE ShiftedOutput(int32_t* o, int shift_right, int shift_left)
        : out(o),
          rounding(_mm_sll_epi32(_mm_set1_epi32(1), count(static_cast<uint32_t>(shift_right) - 1u))),
          right(count(static_cast<uint32_t>(shift_right))),
          left(count(static_cast<uint32_t>(shift_left))) {}

    static CONVOLVE_INLINE __m128i count(uint32_t shift) {
        return _mm_cvtsi32_si128(static_cast<int>(shift));
    }
    CONVOLVE_INLINE __m128i shifted(__m128i acc) const {
        return _mm_sll_epi32(_mm_sra_epi32(_mm_add_epi32(acc, rounding), right), left);
    }
    CONVOLVE_INLINE void put(ptrdiff_t i, __m128i low, __m128i high) const {
        store(out + i, shifted(low));
        store(out + i + 4, shifted(high));
    }
};

CONVOLVE_INLINE void convolveI16I16(const int16_t* coeffs, const int16_t* signal, int16_t* out, int num_out,
                                    int num_taps) {
    convolve(coeffs, signal, num_out, num_taps, NarrowedOutput{out});
}

CONVOLVE_INLINE void convolveI16I32(const int16_t* coeffs, const int16_t* signal, int32_t* out,
                                    int shift_right, int num_out, int num_taps, int shift_left) {
    convolve(coeffs, signal, num_out, num_taps, ShiftedOutput(out, shift_right, shift_left));
}

}  // namespace
