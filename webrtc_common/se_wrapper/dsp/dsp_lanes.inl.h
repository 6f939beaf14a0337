// Vectors of 16-bit samples, and of the 32-bit values that they are made of. Included by the bodies of the
// routines that exist in several builds. Nothing here or there may be shared between source files: no name with
// external linkage, nothing from the standard library, everything inlined. Else the linker might keep the copy
// built for one processor and give it to another.
//
// 256 bits are two halves of 128: every operation happens within a half, so that one body serves both sizes.
#pragma once

#include <immintrin.h>
#include <stddef.h>
#include <stdint.h>

#define DSP_INLINE inline __attribute__((always_inline))
#define DSP_UNROLL _Pragma("GCC unroll 8")  // at every optimisation level: rows live in registers

namespace {

struct Eight {
    using Vector = __m128i;
    static constexpr size_t kSamples = 8;
    // The last thing that a routine does: SSE code after it would be slow on some processors if it left the upper
    // halves of the registers in use. Compilers do it by themselves only when they optimise as for a release.
    static DSP_INLINE void clearUpperHalves() {}
    static DSP_INLINE Vector load(const int16_t* p) {
        return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
    }
    // Eight at `low`; sixteen take their upper half at `high`.
    static DSP_INLINE Vector halves(const int16_t* low, const int16_t* /*high*/) { return load(low); }
    static DSP_INLINE void store(int16_t* p, Vector v) { _mm_storeu_si128(reinterpret_cast<__m128i*>(p), v); }
    static DSP_INLINE Vector eachHalf(__m128i v) { return v; }
    static DSP_INLINE Vector all32(int x) { return _mm_set1_epi32(x); }
    static DSP_INLINE Vector shuffle(Vector v, Vector bytes) { return _mm_shuffle_epi8(v, bytes); }
    static DSP_INLINE Vector zipLow(Vector a, Vector b) { return _mm_unpacklo_epi16(a, b); }
    static DSP_INLINE Vector zipHigh(Vector a, Vector b) { return _mm_unpackhi_epi16(a, b); }
    static DSP_INLINE Vector withSign(Vector v, Vector signs) { return _mm_sign_epi16(v, signs); }
    static DSP_INLINE Vector multiplyAddPairs(Vector a, Vector b) { return _mm_madd_epi16(a, b); }
    static DSP_INLINE Vector add32(Vector a, Vector b) { return _mm_add_epi32(a, b); }
    template <int kCount>
    static DSP_INLINE Vector shiftRight32(Vector v) {
        return _mm_srai_epi32(v, kCount);
    }
    static DSP_INLINE Vector saturate(Vector low, Vector high) { return _mm_packs_epi32(low, high); }
};

#ifdef __AVX2__
struct Sixteen {
    using Vector = __m256i;
    static constexpr size_t kSamples = 16;
    static DSP_INLINE void clearUpperHalves() { _mm256_zeroupper(); }
    static DSP_INLINE Vector load(const int16_t* p) {
        return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
    }
    static DSP_INLINE Vector halves(const int16_t* low, const int16_t* high) {
        return _mm256_inserti128_si256(_mm256_castsi128_si256(Eight::load(low)), Eight::load(high), 1);
    }
    static DSP_INLINE void store(int16_t* p, Vector v) {
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(p), v);
    }
    static DSP_INLINE Vector eachHalf(__m128i v) { return _mm256_broadcastsi128_si256(v); }
    static DSP_INLINE Vector all32(int x) { return _mm256_set1_epi32(x); }
    static DSP_INLINE Vector shuffle(Vector v, Vector bytes) { return _mm256_shuffle_epi8(v, bytes); }
    static DSP_INLINE Vector zipLow(Vector a, Vector b) { return _mm256_unpacklo_epi16(a, b); }
    static DSP_INLINE Vector zipHigh(Vector a, Vector b) { return _mm256_unpackhi_epi16(a, b); }
    static DSP_INLINE Vector withSign(Vector v, Vector signs) { return _mm256_sign_epi16(v, signs); }
    static DSP_INLINE Vector multiplyAddPairs(Vector a, Vector b) { return _mm256_madd_epi16(a, b); }
    static DSP_INLINE Vector add32(Vector a, Vector b) { return _mm256_add_epi32(a, b); }
    template <int kCount>
    static DSP_INLINE Vector shiftRight32(Vector v) {
        return _mm256_srai_epi32(v, kCount);
    }
    static DSP_INLINE Vector saturate(Vector low, Vector high) { return _mm256_packs_epi32(low, high); }
};
using Widest = Sixteen;
#else
using Widest = Eight;
#endif

}  // namespace
