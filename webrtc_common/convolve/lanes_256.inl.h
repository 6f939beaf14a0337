// A group of 16 outputs in registers of 256 bits. Included beside convolve_body.inl.h; its rules apply here,
// too.
#pragma once

#include "webrtc_common/convolve/lanes_128.inl.h"

namespace {

struct Lanes256 {
    using Vector = __m256i;
    using Narrower = Lanes128;
    static constexpr size_t kOutputs = 16;
    static constexpr size_t kGroups = 5;  // together: 10 sums
    static constexpr size_t kSums = kDotProduct ? 8 : 0;
    static constexpr size_t kSets = 1;
    static constexpr bool kCanBePart = false;
    static constexpr size_t kLongestWindowStep = 0;
    static constexpr size_t kEveryOtherStep = 4;

    static CONVOLVE_INLINE void clearUpperHalves() { _mm256_zeroupper(); }
    static CONVOLVE_INLINE Vector zero() { return _mm256_setzero_si256(); }
    static CONVOLVE_INLINE Vector all(int value) { return _mm256_set1_epi32(value); }
    static CONVOLVE_INLINE Vector pair(const int16_t* coeffs) { return all(tapPair(coeffs)); }
    static CONVOLVE_INLINE Vector load(const int16_t* p) {
        return _mm256_loadu_si256(reinterpret_cast<const Vector*>(p));
    }
    static CONVOLVE_INLINE void multiplyAdd(Vector& sums, Vector samples, Vector taps) {
#if defined(__AVXVNNI__)
        sums = _mm256_dpwssd_avx_epi32(sums, samples, taps);
#else
        sums = _mm256_add_epi32(sums, _mm256_madd_epi16(samples, taps));
        __asm__("" : "+x"(sums));  // as in 128 bits
#endif
    }
    static CONVOLVE_INLINE void multiplyAddInPlace(Vector& sums, Vector samples, Vector taps) {
#if defined(__AVXVNNI__)
        multiplyAdd(sums, samples, taps);
        CONVOLVE_IN_REGISTER(sums);
#else
        CONVOLVE_ADD_IN_PLACE(sums, _mm256_madd_epi16(samples, taps));
#endif
    }
    static CONVOLVE_INLINE Vector add(Vector a, Vector b) {
        return _mm256_add_epi32(a, b);
    }
    static CONVOLVE_INLINE Vector bits(Vector v, int mask) {
        return _mm256_and_si256(v, all(mask));
    }
    static CONVOLVE_INLINE Vector subtract(Vector a, Vector b) {
        return _mm256_sub_epi32(a, b);
    }
    static CONVOLVE_INLINE Vector shiftRight(Vector v, __m128i count) {
        return _mm256_sra_epi32(v, count);
    }
    static CONVOLVE_INLINE Vector shiftLeft(Vector v, __m128i count) {
        return _mm256_sll_epi32(v, count);
    }
    // Unpacking and packing work within each half.
    static CONVOLVE_INLINE void storeNarrowed(int16_t* out, Vector even, Vector odd) {
        store(out, _mm256_packs_epi32(_mm256_unpacklo_epi32(even, odd), _mm256_unpackhi_epi32(even, odd)));
    }
    static CONVOLVE_INLINE void storeWide(int32_t* out, Vector even, Vector odd) {
        const Vector low = _mm256_unpacklo_epi32(even, odd);
        const Vector high = _mm256_unpackhi_epi32(even, odd);
        store(out, _mm256_permute2x128_si256(low, high, 0x20));
        store(out + 8, _mm256_permute2x128_si256(low, high, 0x31));
    }
    static CONVOLVE_INLINE void storeHalf(int16_t* out, Vector sums) {
        const Vector narrowed = _mm256_permute4x64_epi64(_mm256_packs_epi32(sums, sums), 0x08);
        Lanes128::store(out, _mm256_castsi256_si128(narrowed));
    }
    static CONVOLVE_INLINE void storeHalf(int16_t* out, Vector sums, size_t count) {
        int16_t all[kOutputs / 2] = {};
        storeHalf(all, sums);
        for (size_t i = 0; i < count; ++i) out[i] = all[i];
    }
    template <size_t kApart>
    static CONVOLVE_INLINE Vector tapsOfFours(const int16_t* p, __m128i to_lanes) {
        const auto* const high = reinterpret_cast<const __m128i*>(p);
        const Vector low = _mm256_castsi128_si256(Lanes128::load(p + kApart));
        return _mm256_shuffle_epi8(_mm256_inserti128_si256(low, _mm_loadu_si128(high), 1),
                                   _mm256_broadcastsi128_si256(to_lanes));
    }
    // The pairs 0, 2, 8, 10, 4, 6, 12, 14 of `low` and `high`, and those behind each. inOrder() puts them in ascending
    // order.
    static CONVOLVE_INLINE Vector evenPairs(Vector low, Vector high) {
        return _mm256_castps_si256(
            _mm256_shuffle_ps(_mm256_castsi256_ps(low), _mm256_castsi256_ps(high), 0x88));
    }
    static CONVOLVE_INLINE Vector oddPairs(Vector low, Vector high) {
        return _mm256_castps_si256(
            _mm256_shuffle_ps(_mm256_castsi256_ps(low), _mm256_castsi256_ps(high), 0xdd));
    }
    static CONVOLVE_INLINE Vector inOrder(Vector pairs) {
        return _mm256_permute4x64_epi64(pairs, 0xd8);
    }
    static CONVOLVE_INLINE Vector upperParts(Vector taps) {
        return _mm256_mulhrs_epi16(taps, _mm256_set1_epi16(128));
    }
    static CONVOLVE_INLINE size_t collectPairs(const int16_t* from, size_t step, size_t count, int16_t* to) {
        if (step > 6) return 0;
        const Vector to_pairs = _mm256_broadcastsi128_si256(Lanes128::toPairs(step));
        const size_t behind = 8 + Lanes128::outputsBehind(step);
        size_t i = 0;
        for (; i + behind <= count; i += 8) {
            const int16_t* const samples = from + i * step;
            const auto twice = [&](const int16_t* low) CONVOLVE_LAMBDA {
                const auto* const high = reinterpret_cast<const __m128i*>(low + 4 * step);
                const Vector both = _mm256_castsi128_si256(Lanes128::load(low));
                return _mm256_shuffle_epi8(_mm256_inserti128_si256(both, _mm_loadu_si128(high), 1), to_pairs);
            };
            store(to + 2 * i, _mm256_unpacklo_epi64(twice(samples), twice(samples + 2 * step)));
        }
        return i + Lanes128::collectPairs(from + i * step, step, count - i, to + 2 * i);
    }
    template <class T>
    static CONVOLVE_INLINE void store(T* p, Vector v) {
        _mm256_storeu_si256(reinterpret_cast<Vector*>(p), v);
    }
};

}  // namespace
