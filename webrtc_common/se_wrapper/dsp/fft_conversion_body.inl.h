// The body of the conversions between the engine's 16-bit values and the floats of the FFT, included by one
// source file an instruction set. See dsp_lanes.inl.h.
//
// The last eight may overlap those before, and fewer than eight are converted one by one, all to the same bits:
// single values go through the same instruction, since a cast in the language is undefined outside the range of
// its target.
#pragma once

#include "webrtc_common/se_wrapper/dsp/dsp_lanes.inl.h"

#define CONVERSION_UNROLL _Pragma("GCC unroll 4")  // for a body of hardly more instructions than its loop

namespace {

#ifdef __AVX2__
DSP_INLINE void widenEight(const int16_t* in, float* out) {
    _mm256_storeu_ps(out, _mm256_cvtepi32_ps(_mm256_cvtepi16_epi32(Eight::load(in))));
}
#else
DSP_INLINE void widenEight(const int16_t* in, float* out) {
    const __m128i eight = Eight::load(in);
    _mm_storeu_ps(out, _mm_cvtepi32_ps(_mm_cvtepi16_epi32(eight)));
    _mm_storeu_ps(out + 4, _mm_cvtepi32_ps(_mm_cvtepi16_epi32(_mm_srli_si128(eight, 8))));
}
#endif

DSP_INLINE void widen(const int16_t* in, float* out, ptrdiff_t count) {
    ptrdiff_t i = 0;
    CONVERSION_UNROLL for (; i + 8 <= count; i += 8) widenEight(in + i, out + i);
    if (i == count) return;
    if (count >= 8) return widenEight(in + count - 8, out + count - 8);
    for (; i < count; ++i) out[i] = in[i];
}

DSP_INLINE __m128i truncatedFour(const float* in, float scale) {
    return _mm_cvttps_epi32(_mm_mul_ps(_mm_loadu_ps(in), _mm_set1_ps(scale)));
}

DSP_INLINE int16_t narrowOne(float in, float scale) {
    const __m128i truncated = _mm_cvttps_epi32(_mm_set_ss(in * scale));
    return static_cast<int16_t>(_mm_cvtsi128_si32(Eight::saturate(truncated, truncated)));
}

DSP_INLINE void narrowEight(const float* in, float scale, int16_t* out) {
    Eight::store(out, Eight::saturate(truncatedFour(in, scale), truncatedFour(in + 4, scale)));
}

#ifdef __AVX2__
DSP_INLINE __m256i truncatedEight(const float* in, float scale) {
    return _mm256_cvttps_epi32(_mm256_mul_ps(_mm256_loadu_ps(in), _mm256_set1_ps(scale)));
}

DSP_INLINE void narrowSixteen(const float* in, float scale, int16_t* out) {
    const __m256i sixteen = Sixteen::saturate(truncatedEight(in, scale), truncatedEight(in + 8, scale));
    Sixteen::store(out, _mm256_permute4x64_epi64(sixteen, _MM_SHUFFLE(3, 1, 2, 0)));
}
#endif

DSP_INLINE void narrowScaled(const float* in, float scale, int16_t* out, ptrdiff_t count) {
    ptrdiff_t i = 0;
#ifdef __AVX2__
    for (; i + 16 <= count; i += 16) narrowSixteen(in + i, scale, out + i);
#endif
    for (; i + 8 <= count; i += 8) narrowEight(in + i, scale, out + i);
    if (i == count) return;
    if (count >= 8) return narrowEight(in + count - 8, scale, out + count - 8);
    for (; i < count; ++i) out[i] = narrowOne(in[i], scale);
}

}  // namespace
