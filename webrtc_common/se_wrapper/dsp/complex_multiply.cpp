// Product of complex vectors in Q15. Compiled for SSE4.1, the floor.
// Threads: any. No standard library templates and no functions shared with other files here.
#include "webrtc_common/se_wrapper/dsp/complex_multiply.h"

#include <smmintrin.h>

namespace quill::media::se_wrapper {
namespace {

inline __m128i load(const int16_t* p) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
}

// Rounded Q15 values of sums of Q30 products, still 32 bits wide.
inline __m128i rounded(__m128i sums) {
    return _mm_srai_epi32(_mm_add_epi32(sums, _mm_set1_epi32(1 << 14)), 15);
}

inline void multiplyFour(const int16_t* a, const int16_t* b, int16_t* out) {
    const __m128i conjugate = _mm_setr_epi16(1, -1, 1, -1, 1, -1, 1, -1);
    const __m128i swap = _mm_setr_epi8(2, 3, 0, 1, 6, 7, 4, 5, 10, 11, 8, 9, 14, 15, 12, 13);
    const __m128i x = load(a);
    const __m128i y = load(b);
    const __m128i re = rounded(_mm_madd_epi16(_mm_mullo_epi16(x, conjugate), y));
    const __m128i im = rounded(_mm_madd_epi16(x, _mm_shuffle_epi8(y, swap)));
    const __m128i product = _mm_packs_epi32(_mm_unpacklo_epi32(re, im), _mm_unpackhi_epi32(re, im));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), product);
}

inline int16_t roundedAndSaturated(uint32_t sum) {
    const int32_t value = static_cast<int32_t>(sum + (1u << 14)) >> 15;
    return static_cast<int16_t>(value < -32768 ? -32768 : value > 32767 ? 32767 : value);
}

inline void multiplyOne(const int16_t* a, const int16_t* b, int16_t* out) {
    const auto product = [](int32_t x, int32_t y) { return static_cast<uint32_t>(x * y); };
    const int16_t re = roundedAndSaturated(product(a[0], b[0]) - product(a[1], b[1]));
    const int16_t im = roundedAndSaturated(product(a[0], b[1]) + product(a[1], b[0]));
    out[0] = re;
    out[1] = im;
}

}  // namespace

void vcmul_i16(int16_t* a, int16_t* b, int16_t* out, uint16_t n) {
    const int values = 2 * n;
    int i = 0;
    for (; i + 8 <= values; i += 8) multiplyFour(a + i, b + i, out + i);
    for (; i < values; i += 2) multiplyOne(a + i, b + i, out + i);
}

}  // namespace quill::media::se_wrapper
