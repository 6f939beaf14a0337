// A group of 32 outputs in registers of 512 bits. Included beside convolve_body.inl.h; its rules apply here,
// too. Nearly every load crosses a cache line and counts twice, so two sets share one, or it is shifted.
#pragma once

#include "webrtc_common/convolve/lanes_256.inl.h"

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
    static CONVOLVE_INLINE void multiplyAddInPlace(Vector& sums, Vector samples, Vector taps) {
        multiplyAdd(sums, samples, taps);
        CONVOLVE_IN_REGISTER(sums);
    }
    static CONVOLVE_INLINE Vector add(Vector a, Vector b) { return _mm512_add_epi32(a, b); }
    static CONVOLVE_INLINE Vector bits(Vector v, int mask) { return _mm512_and_si512(v, all(mask)); }
    static CONVOLVE_INLINE Vector subtract(Vector a, Vector b) { return _mm512_sub_epi32(a, b); }
    static CONVOLVE_INLINE Vector shiftRight(Vector v, __m128i count) { return _mm512_sra_epi32(v, count); }
    static CONVOLVE_INLINE Vector shiftLeft(Vector v, __m128i count) { return _mm512_sll_epi32(v, count); }
    static CONVOLVE_INLINE void store(int32_t* p, Vector v) { _mm512_storeu_si512(p, v); }
    static CONVOLVE_INLINE size_t collectPairs(const int16_t* from, size_t step, size_t count, int16_t* to) {
        return Lanes256::collectPairs(from, step, count, to);
    }

    // 64 samples, in which 16 outputs that are `step` apart find their pairs: the first at the places 0 and 1, step and
    // step + 1, and so on, the next two places further.
    struct Window {
        Vector low, high;
    };
    static constexpr int kWindow = 64;
    static constexpr size_t kLongestWindowStep = 4;
    static CONVOLVE_INLINE ptrdiff_t pairsInWindow(ptrdiff_t step) { return (kWindow - 15 * step) / 2; }
    static CONVOLVE_INLINE Window window(const int16_t* p) { return {load(p), load(p + 32)}; }
    // The first `count` samples; nothing else is read.
    static CONVOLVE_INLINE Window window(const int16_t* p, ptrdiff_t count) {
        return {load(p, firstSamples(count)), load(p + 32, firstSamples(count - 32))};
    }
    static CONVOLVE_INLINE Part firstSamples(ptrdiff_t count) {
        return count >= 32 ? ~Part{0} : count > 0 ? ~Part{0} >> (32 - count) : 0;
    }
    static CONVOLVE_INLINE Vector firstPlaces(ptrdiff_t step) {
        const Vector outputs =
            _mm512_setr_epi32(0x00000, 0x10001, 0x20002, 0x30003, 0x40004, 0x50005, 0x60006, 0x70007, 0x80008,
                              0x90009, 0xa000a, 0xb000b, 0xc000c, 0xd000d, 0xe000e, 0xf000f);
        const Vector first = _mm512_mullo_epi16(outputs, _mm512_set1_epi16(static_cast<int16_t>(step)));
        return _mm512_add_epi16(first, all(1 << 16));
    }
    static CONVOLVE_INLINE Vector nextPlaces(Vector places) {
        return _mm512_add_epi16(places, _mm512_set1_epi16(2));
    }
    static CONVOLVE_INLINE Vector pick(const Window& window, Vector places) {
        return _mm512_permutex2var_epi16(window.low, places, window.high);
    }
    static CONVOLVE_INLINE void storeHalf(int16_t* out, Vector sums) {
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(out), _mm512_cvtsepi32_epi16(sums));
    }
    static CONVOLVE_INLINE void storeHalf(int16_t* out, Vector sums, size_t count) {
        _mm512_mask_storeu_epi16(out, (Part{1} << count) - 1,
                                 _mm512_castsi256_si512(_mm512_cvtsepi32_epi16(sums)));
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
