// Real FIR filter: through the correlation kernel where the lengths allow, else directly.
// It must not allocate.
#include "webrtc_common/se_wrapper/dsp/compute_rfir.h"

#include <emmintrin.h>

#include <algorithm>
#include <cstddef>

#include "webrtc_common/convolve/convolve.h"
#include "webrtc_common/se_wrapper/dsp/stack_scratch.h"

namespace quill::media::se_wrapper {
namespace {

// The coefficients from the first to the last that is not zero; empty when all are.
struct Span {
    int first;
    int end;
};

Span nonZeroSpan(const int16_t* coeffs, int taps) {
    int first = 0;
    while (first < taps && coeffs[first] == 0) ++first;
    int end = taps;
    while (end > first && coeffs[end - 1] == 0) --end;
    return {first, end};
}

// Exact sum of a[i] b[i]. Two products added fill the range -2^31 < s <= 2^31, of which 32 bits cannot hold
// the upper end alone: s - 1 always fits, so that is what gets widened, and the ones are added at the end.
int64_t dotProduct(const int16_t* a, const int16_t* b, int count) {
    const __m128i one = _mm_set1_epi32(1);
    __m128i sums = _mm_setzero_si128();
    int i = 0;
    for (; i + 8 <= count; i += 8) {
        const __m128i x = _mm_loadu_si128(reinterpret_cast<const __m128i*>(a + i));
        const __m128i y = _mm_loadu_si128(reinterpret_cast<const __m128i*>(b + i));
        const __m128i pairs = _mm_sub_epi32(_mm_madd_epi16(x, y), one);
        const __m128i sign = _mm_srai_epi32(pairs, 31);
        sums = _mm_add_epi64(sums, _mm_unpacklo_epi32(pairs, sign));
        sums = _mm_add_epi64(sums, _mm_unpackhi_epi32(pairs, sign));
    }
    alignas(16) int64_t lanes[2];
    _mm_store_si128(reinterpret_cast<__m128i*>(lanes), sums);
    int64_t sum = lanes[0] + lanes[1] + i / 2;  // one for each pair
    for (; i < count; ++i) sum += a[i] * b[i];
    return sum;
}

int16_t roundedAndSaturated(int64_t sum) {
    return static_cast<int16_t>(std::clamp<int64_t>((sum + 16384) >> 15, -32768, 32767));
}

void filterDirectly(const int16_t* signal, const int16_t* coeffs, Span span, int16_t* out,
                    std::size_t num_out, std::size_t step) {
    const int count = span.end - span.first;
    for (std::size_t i = 0; i < num_out; ++i) {
        out[i] = roundedAndSaturated(dotProduct(coeffs + span.first, signal + i * step + span.first, count));
    }
}

// taps a multiple of 8: whole eights of zeros in front are skipped.
void filterWholeEights(const int16_t* signal, const int16_t* coeffs, Span span, int taps, int16_t* out,
                       int num_out) {
    const int skipped = span.first / 8 * 8;
    if (skipped == taps) {
        std::fill_n(out, num_out, int16_t{0});
    } else {
        g_convolve_i16_i16(coeffs + skipped, signal + skipped, out, num_out, taps - skipped);
    }
}

void filterPadded(const int16_t* signal, const int16_t* coeffs, int taps, int16_t* out, int num_out) {
    const int padded_taps = roundedUpToEight(taps);
    int16_t* const padded = SE_WRAPPER_STACK_ARRAY(int16_t, padded_taps);
    std::fill(std::copy_n(coeffs, taps, padded), padded + padded_taps, int16_t{0});
    g_convolve_i16_i16(padded, signal, out, num_out, padded_taps);
}

}  // namespace

void computeRFir(int16_t* signal, int16_t* coeffs, int16_t* out, uint16_t order, uint16_t num_out,
                 uint16_t step) {
    if (num_out == 0) return;  // the kernel writes at least one block
    const int taps = order + 1;
    const bool whole_blocks = num_out % 8 == 0 && step == 1;
    if (whole_blocks && taps % 8 != 0) {
        filterPadded(signal, coeffs, taps, out, num_out);
        return;
    }
    const Span span = nonZeroSpan(coeffs, taps);
    if (whole_blocks) {
        filterWholeEights(signal, coeffs, span, taps, out, num_out);
    } else {
        filterDirectly(signal, coeffs, span, out, num_out, step);
    }
}

}  // namespace quill::media::se_wrapper
