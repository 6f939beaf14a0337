// Between the engine's 16-bit values and the floats of the FFT. Compiled for SSE4.1, the floor.
// Threads: any. No standard library templates and no functions shared with other files here.
//
// The single values go through the same conversion instruction as the eights: a cast in the language is
// undefined outside the range of its target, the instruction is not.
#include "webrtc_common/se_wrapper/dsp/fft_conversion.h"

#include <smmintrin.h>

namespace quill::media::se_wrapper {
namespace {

inline __m128 scaled(const float* in, __m128 factor) {
    return _mm_mul_ps(_mm_loadu_ps(in), factor);
}

constexpr float kHalfUnit = 512.0f;

inline __m128i roundedQ10(__m128 values) {
    return _mm_srai_epi32(_mm_cvttps_epi32(_mm_add_ps(values, _mm_set1_ps(kHalfUnit))), 10);
}

inline int truncated(float value) {
    return _mm_cvttss_si32(_mm_set_ss(value));
}

inline void store(int16_t* out, __m128i eight) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), eight);
}

inline int16_t saturated(int value) {
    return static_cast<int16_t>(value < -32768 ? -32768 : value > 32767 ? 32767 : value);
}

}  // namespace

void widen(const int16_t* in, float* out, int count) {
    int i = 0;
    for (; i + 8 <= count; i += 8) {
        const __m128i eight = _mm_loadu_si128(reinterpret_cast<const __m128i*>(in + i));
        _mm_storeu_ps(out + i, _mm_cvtepi32_ps(_mm_cvtepi16_epi32(eight)));
        _mm_storeu_ps(out + i + 4, _mm_cvtepi32_ps(_mm_cvtepi16_epi32(_mm_srli_si128(eight, 8))));
    }
    for (; i < count; ++i) out[i] = in[i];
}

void narrowScaled(const float* in, float scale, int16_t* out, int count) {
    const __m128 factor = _mm_set1_ps(scale);
    const __m128i low_halves = _mm_setr_epi8(0, 1, 4, 5, 8, 9, 12, 13, 0, 1, 4, 5, 8, 9, 12, 13);
    int i = 0;
    for (; i + 8 <= count; i += 8) {
        const __m128i low = _mm_shuffle_epi8(_mm_cvttps_epi32(scaled(in + i, factor)), low_halves);
        const __m128i high = _mm_shuffle_epi8(_mm_cvttps_epi32(scaled(in + i + 4, factor)), low_halves);
        store(out + i, _mm_unpacklo_epi64(low, high));
    }
    for (; i < count; ++i) out[i] = static_cast<int16_t>(truncated(in[i] * scale));
}

int16_t narrowScaledHalf(float in, float scale) {
    const double half = static_cast<double>(in * scale) * 0.5;
    return static_cast<int16_t>(_mm_cvttsd_si32(_mm_set_sd(half)));
}

void narrowQ10(const float* in, float gain, int16_t* out, int count) {
    const __m128 factor = _mm_set1_ps(gain);
    int i = 0;
    for (; i + 8 <= count; i += 8) {
        const __m128i low = roundedQ10(scaled(in + i, factor));
        const __m128i high = roundedQ10(scaled(in + i + 4, factor));
        store(out + i, _mm_packs_epi32(low, high));  // saturates
    }
    for (; i < count; ++i) out[i] = saturated(truncated(in[i] * gain + kHalfUnit) >> 10);
}

}  // namespace quill::media::se_wrapper
