// A group of eight outputs in registers of 128 bits. Included beside convolve_body.inl.h; its rules apply
// here, too. Multiplication and addition are those of the including file's instruction set.
#pragma once

#include <immintrin.h>
#include <stddef.h>
#include <stdint.h>

#define CONVOLVE_INLINE inline __attribute__((always_inline))
#define CONVOLVE_LAMBDA __attribute__((always_inline))

// Hide the origin of a vector, so that it stays in its register, or of an address, so that nothing that was loaded from
// it before does.
#ifdef __AVX512F__
#define CONVOLVE_IN_REGISTER(vector) __asm__("" : "+v"(vector))
#else
#define CONVOLVE_IN_REGISTER(vector) __asm__("" : "+x"(vector))
#endif
#define CONVOLVE_NEW_ADDRESS(pointer) __asm__("" : "+r"(pointer))

// Adds 32-bit values to sums, in the register of the sums.
#ifdef __AVX__
#define CONVOLVE_ADD_IN_PLACE(sums, more) __asm__("vpaddd %1, %0, %0" : "+x"(sums) : "x"(more))
#else
#define CONVOLVE_ADD_IN_PLACE(sums, more) __asm__("paddd %1, %0" : "+x"(sums) : "x"(more))
#endif

namespace {

// Two taps as one 32-bit value, from any address that is aligned for int16_t.
CONVOLVE_INLINE int tapPair(const int16_t* coeffs) {
    int pair;
    __builtin_memcpy(&pair, coeffs, sizeof pair);
    return pair;
}

// Multiplication and addition in one instruction.
#ifdef __AVXVNNI__
constexpr bool kDotProduct = true;
#else
constexpr bool kDotProduct = false;
#endif

struct Lanes128 {
    using Vector = __m128i;
    static constexpr size_t kOutputs = 8;
    static constexpr size_t kGroups = 4;  // together: 8 sums in 16 registers, the rest for products
    static constexpr size_t kSums = kDotProduct ? 8 : 0;  // as many as hide a multiplication's latency
    static constexpr size_t kSets = 1;
    static constexpr bool kCanBePart = false;
    static constexpr size_t kLongestWindowStep = 0;  // see pairs_windows.inl.h
    static constexpr size_t kEveryOtherStep = 0;     // see pairs_in_place.inl.h

    // The last thing that a kernel does: SSE code after it would be slow on some processors if it left the upper
    // halves of the registers in use. Compilers do it by themselves only when they optimise as for a release.
    static CONVOLVE_INLINE void clearUpperHalves() {}
    static CONVOLVE_INLINE Vector zero() { return _mm_setzero_si128(); }
    static CONVOLVE_INLINE Vector all(int value) { return _mm_set1_epi32(value); }
    // As a float: so gcc loads it into all lanes with one instruction where AVX has it.
    static CONVOLVE_INLINE Vector pair(const int16_t* coeffs) {
        float pair;
        __builtin_memcpy(&pair, coeffs, sizeof pair);
        return _mm_castps_si128(_mm_set1_ps(pair));
    }
    static CONVOLVE_INLINE Vector load(const int16_t* p) {
        return _mm_loadu_si128(reinterpret_cast<const Vector*>(p));
    }
    static CONVOLVE_INLINE void multiplyAdd(Vector& sums, Vector samples, Vector taps) {
#if defined(__AVXVNNI__)
        sums = _mm_dpwssd_avx_epi32(sums, samples, taps);
#else
        sums = _mm_add_epi32(sums, _mm_madd_epi16(samples, taps));
        // Keeps the order of the additions: rearranged into a tree they need more than the available registers.
        __asm__("" : "+x"(sums));
#endif
    }
    // The same for loops of one multiplication for each sum: there compilers copy all sums in each round.
    static CONVOLVE_INLINE void multiplyAddInPlace(Vector& sums, Vector samples, Vector taps) {
#if defined(__AVXVNNI__)
        multiplyAdd(sums, samples, taps);
        CONVOLVE_IN_REGISTER(sums);
#else
        CONVOLVE_ADD_IN_PLACE(sums, _mm_madd_epi16(samples, taps));
#endif
    }
    static CONVOLVE_INLINE Vector add(Vector a, Vector b) {
        return _mm_add_epi32(a, b);
    }
    static CONVOLVE_INLINE Vector bits(Vector v, int mask) {
        return _mm_and_si128(v, all(mask));
    }
    static CONVOLVE_INLINE Vector subtract(Vector a, Vector b) {
        return _mm_sub_epi32(a, b);
    }
    static CONVOLVE_INLINE Vector shiftRight(Vector v, __m128i count) {
        return _mm_sra_epi32(v, count);
    }
    static CONVOLVE_INLINE Vector shiftLeft(Vector v, __m128i count) {
        return _mm_sll_epi32(v, count);
    }
    static CONVOLVE_INLINE void storeNarrowed(int16_t* out, Vector even, Vector odd) {
        store(out, _mm_packs_epi32(_mm_unpacklo_epi32(even, odd), _mm_unpackhi_epi32(even, odd)));
    }
    static CONVOLVE_INLINE void storeWide(int32_t* out, Vector even, Vector odd) {
        store(out, _mm_unpacklo_epi32(even, odd));
        store(out + 4, _mm_unpackhi_epi32(even, odd));
    }
    // A sum for each output: narrows those of half a group, or the first `count` of them.
    static CONVOLVE_INLINE void storeHalf(int16_t* out, Vector sums) {
        _mm_storel_epi64(reinterpret_cast<Vector*>(out), _mm_packs_epi32(sums, sums));
    }
    static CONVOLVE_INLINE void storeHalf(int16_t* out, Vector sums, size_t count) {
        int16_t all[kOutputs / 2] = {};
        storeHalf(all, sums);
        for (size_t i = 0; i < count; ++i) out[i] = all[i];
    }
    // Four lanes after the other: each four get their pairs of taps out of the eight at `p`, the lanes before them out of
    // those `kApart` further.
    template <size_t kApart>
    static CONVOLVE_INLINE Vector tapsOfFours(const int16_t* p, __m128i to_lanes) {
        return _mm_shuffle_epi8(load(p), to_lanes);
    }
    static CONVOLVE_INLINE Vector upperParts(Vector taps) {
        return _mm_mulhrs_epi16(taps, _mm_set1_epi16(128));
    }
    // The shuffle of eight samples that puts the pairs of two outputs first, step 1 to 6.
    static CONVOLVE_INLINE Vector toPairs(size_t step) {
        const Vector second = _mm_slli_epi64(_mm_set1_epi8(static_cast<char>(2 * step)), 32);
        return _mm_add_epi8(_mm_set1_epi32(0x03020100), second);
    }
    // How many outputs there must be behind those of a vector of pairs, so that the eight samples that are loaded for
    // the last two of these exist.
    static CONVOLVE_INLINE size_t outputsBehind(size_t step) {
        return step < 3 ? 5 : 1;
    }
    // Collects the pairs for as many outputs as there are whole vectors of samples for. Returns their number.
    static CONVOLVE_INLINE size_t collectPairs(const int16_t* from, size_t step, size_t count, int16_t* to) {
        if (step > 6) return 0;
        const Vector to_pairs = toPairs(step);
        const size_t behind = 4 + outputsBehind(step);
        size_t i = 0;
        for (; i + behind <= count; i += 4) {
            const int16_t* const samples = from + i * step;
            store(to + 2 * i, _mm_unpacklo_epi64(_mm_shuffle_epi8(load(samples), to_pairs),
                                                 _mm_shuffle_epi8(load(samples + 2 * step), to_pairs)));
        }
        return i;
    }
    template <class T>
    static CONVOLVE_INLINE void store(T* p, Vector v) {
        _mm_storeu_si128(reinterpret_cast<Vector*>(p), v);
    }
};

}  // namespace
