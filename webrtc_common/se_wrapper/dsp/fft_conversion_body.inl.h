// The body of the conversions around the FFT, included by one source file an instruction set. Nothing here may
// be shared between source files: no name with external linkage, nothing from the standard library, everything
// inlined. Else the linker might keep the copy built for one processor and give it to another.
//
// The single values go through the same conversion instruction as the eights: a cast in the language is
// undefined outside the range of its target, the instruction is not.
#pragma once

#include <immintrin.h>
#include <stddef.h>
#include <stdint.h>

#define CONVERSION_INLINE inline __attribute__((always_inline))
#define CONVERSION_UNROLL _Pragma("GCC unroll 4")  // for a body of hardly more instructions than its loop

namespace {

constexpr float kHalfUnit = 512.0f;

CONVERSION_INLINE __m128i load(const int16_t* p) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
}
CONVERSION_INLINE void store(int16_t* p, __m128i v) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(p), v);
}

// From scaled floats, truncated to 32 bits, to 16 bits.
struct Low16 {
    static constexpr bool kRounds = false;
    static CONVERSION_INLINE __m128i narrowed(__m128i low, __m128i high) {
        const __m128i mask = _mm_set1_epi32(0xffff);
        return _mm_packus_epi32(_mm_and_si128(low, mask), _mm_and_si128(high, mask));
    }
#ifdef __AVX2__
    static CONVERSION_INLINE __m256i narrowed(__m256i low, __m256i high) {
        const __m256i mask = _mm256_set1_epi32(0xffff);
        return _mm256_packus_epi32(_mm256_and_si256(low, mask), _mm256_and_si256(high, mask));
    }
#endif
};
struct Q10 {
    static constexpr bool kRounds = true;  // half a unit is added before the truncation
    static CONVERSION_INLINE __m128i narrowed(__m128i low, __m128i high) {
        return _mm_packs_epi32(_mm_srai_epi32(low, 10), _mm_srai_epi32(high, 10));  // saturates
    }
#ifdef __AVX2__
    static CONVERSION_INLINE __m256i narrowed(__m256i low, __m256i high) {
        return _mm256_packs_epi32(_mm256_srai_epi32(low, 10), _mm256_srai_epi32(high, 10));
    }
#endif
};

template <class To16>
CONVERSION_INLINE __m128i truncatedFour(const float* in, float factor) {
    __m128 scaled = _mm_mul_ps(_mm_loadu_ps(in), _mm_set1_ps(factor));
    if constexpr (To16::kRounds) scaled = _mm_add_ps(scaled, _mm_set1_ps(kHalfUnit));
    return _mm_cvttps_epi32(scaled);
}

template <class To16>
CONVERSION_INLINE int16_t narrowOne(float in, float factor) {
    float scaled = in * factor;
    if constexpr (To16::kRounds) scaled += kHalfUnit;
    const __m128i value = _mm_cvtsi32_si128(_mm_cvttss_si32(_mm_set_ss(scaled)));
    return static_cast<int16_t>(_mm_cvtsi128_si32(To16::narrowed(value, value)));
}

template <class To16>
CONVERSION_INLINE void narrowEight(const float* in, float factor, int16_t* out) {
    store(out, To16::narrowed(truncatedFour<To16>(in, factor), truncatedFour<To16>(in + 4, factor)));
}

#ifdef __AVX2__
template <class To16>
CONVERSION_INLINE __m256i truncatedEight(const float* in, float factor) {
    __m256 scaled = _mm256_mul_ps(_mm256_loadu_ps(in), _mm256_set1_ps(factor));
    if constexpr (To16::kRounds) scaled = _mm256_add_ps(scaled, _mm256_set1_ps(kHalfUnit));
    return _mm256_cvttps_epi32(scaled);
}

template <class To16>
CONVERSION_INLINE void narrowSixteen(const float* in, float factor, int16_t* out) {
    const __m256i sixteen =
        To16::narrowed(truncatedEight<To16>(in, factor), truncatedEight<To16>(in + 8, factor));
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(out),
                        _mm256_permute4x64_epi64(sixteen, _MM_SHUFFLE(3, 1, 2, 0)));
}

CONVERSION_INLINE void widenEight(const int16_t* in, float* out) {
    _mm256_storeu_ps(out, _mm256_cvtepi32_ps(_mm256_cvtepi16_epi32(load(in))));
}
#else
CONVERSION_INLINE void widenEight(const int16_t* in, float* out) {
    const __m128i eight = load(in);
    _mm_storeu_ps(out, _mm_cvtepi32_ps(_mm_cvtepi16_epi32(eight)));
    _mm_storeu_ps(out + 4, _mm_cvtepi32_ps(_mm_cvtepi16_epi32(_mm_srli_si128(eight, 8))));
}
#endif

CONVERSION_INLINE void widen(const int16_t* in, float* out, ptrdiff_t count) {
    ptrdiff_t i = 0;
    CONVERSION_UNROLL for (; i + 8 <= count; i += 8) widenEight(in + i, out + i);
    if (i == count) return;
    if (count >= 8) return widenEight(in + count - 8, out + count - 8);
    for (; i < count; ++i) out[i] = in[i];
}

template <class To16>
CONVERSION_INLINE void narrow(const float* in, float factor, int16_t* out, ptrdiff_t count) {
    ptrdiff_t i = 0;
#ifdef __AVX2__
    for (; i + 16 <= count; i += 16) narrowSixteen<To16>(in + i, factor, out + i);
#endif
    for (; i + 8 <= count; i += 8) narrowEight<To16>(in + i, factor, out + i);
    if (i == count) return;
    if (count >= 8) return narrowEight<To16>(in + count - 8, factor, out + count - 8);
    for (; i < count; ++i) out[i] = narrowOne<To16>(in[i], factor);
}

}  // namespace
