// A group of 32 outputs in registers of 512 bits. Included beside convolve_body.inl.h; its rules apply here,
// too. Nearly every load crosses a cache line and counts twice, so two sets share one, or it is shifted.
#pragma once

#include "webrtc_common/convolve/lanes_128.inl.h"

// gcc 12 warns of the undefined vectors inside its own header.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif

namespace {

struct Lanes512 {
    using Vector = __m512i;
    static constexpr size_t kOutputs = 32;
    static constexpr size_t kGroups = 5;
    static constexpr size_t kSums = 20;
    static constexpr size_t kSets = 2;
    static constexpr bool kCanBePart = true;
    using Part = __mmask32;  // a bit each output

    static CONVOLVE_INLINE void clearUpperHalves() { _mm256_zeroupper(); }
    static CONVOLVE_INLINE Vector zero() { return _mm512_setzero_si512(); }
    static CONVOLVE_INLINE Vector all(int value) { return _mm512_set1_epi32(value); }
    static CONVOLVE_INLINE Vector pair(const int16_t* coeffs) { return all(tapPair(coeffs)); }
    static CONVOLVE_INLINE Part firstOutputs(size_t count) { return ~Part{0} >> (kOutputs - count); }
    static CONVOLVE_INLINE Vector load(const int16_t* p) { return _mm512_loadu_si512(p); }
    static CONVOLVE_INLINE Vector load(const int16_t* p, Part part) {
        return _mm512_maskz_loadu_epi16(part, p);
    }
    // The samples two further than those of `low`, which those of `high` follow.
    static CONVOLVE_INLINE Vector shifted(Vector low, Vector high) {
        return _mm512_alignr_epi32(high, low, 1);
    }
    static CONVOLVE_INLINE void multiplyAdd(Vector& sums, Vector samples, Vector taps) {
        sums = _mm512_dpwssd_epi32(sums, samples, taps);
    }
    static CONVOLVE_INLINE Vector add(Vector a, Vector b) { return _mm512_add_epi32(a, b); }
    static CONVOLVE_INLINE Vector shiftRight(Vector v, __m128i count) { return _mm512_sra_epi32(v, count); }
    static CONVOLVE_INLINE Vector shiftLeft(Vector v, __m128i count) { return _mm512_sll_epi32(v, count); }
    static CONVOLVE_INLINE void store(int32_t* p, Vector v) { _mm512_storeu_si512(p, v); }
    // As in 128 bits. 16 outputs take their pairs from up to 62 samples.
    static CONVOLVE_INLINE size_t collectPairs(const int16_t* from, size_t step, size_t count, int16_t* to) {
        if (step < 1 || step > 4) return 0;
        const Vector outputs = _mm512_setr_epi32(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15);
        const Vector first = _mm512_mullo_epi32(outputs, all(static_cast<int>(step)));
        const Vector pairs = _mm512_or_si512(first, _mm512_slli_epi32(_mm512_add_epi32(first, all(1)), 16));
        const uint64_t read = ~uint64_t{0} >> (64 - (15 * step + 2));
        size_t i = 0;
        for (; i + 16 <= count; i += 16) {
            const int16_t* const samples = from + i * step;
            const Vector low = load(samples, static_cast<Part>(read));
            const Vector high = load(samples + 32, static_cast<Part>(read >> 32));
            _mm512_storeu_si512(to + 2 * i, _mm512_permutex2var_epi16(low, pairs, high));
        }
        return i;
    }
    // Unpacking and packing work within each quarter.
    static CONVOLVE_INLINE void storeNarrowed(int16_t* out, Vector even, Vector odd, Part part = ~Part{0}) {
        const Vector low = _mm512_unpacklo_epi32(even, odd);
        const Vector high = _mm512_unpackhi_epi32(even, odd);
        _mm512_mask_storeu_epi16(out, part, _mm512_packs_epi32(low, high));
    }
    // low holds outputs 0 to 3, 8 to 11, 16 to 19, 24 to 27, high the others.
    static CONVOLVE_INLINE void storeWide(int32_t* out, Vector even, Vector odd, Part part = ~Part{0}) {
        const Vector low = _mm512_unpacklo_epi32(even, odd);
        const Vector high = _mm512_unpackhi_epi32(even, odd);
        const Vector first = _mm512_setr_epi64(0, 1, 8, 9, 2, 3, 10, 11);
        const Vector second = _mm512_setr_epi64(4, 5, 12, 13, 6, 7, 14, 15);
        _mm512_mask_storeu_epi32(out, static_cast<__mmask16>(part),
                                 _mm512_permutex2var_epi64(low, first, high));
        _mm512_mask_storeu_epi32(out + 16, static_cast<__mmask16>(part >> 16),
                                 _mm512_permutex2var_epi64(low, second, high));
    }
};

}  // namespace
