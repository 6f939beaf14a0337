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

// Two sums for each output of a block: the exact one is 256 high + low. With this number of taps none of the two
// overflows 32 bits, as both parts of a coefficient are -128 to 128.
constexpr int kBlock = 160;
constexpr int kMostTaps = 256;
struct Sums {
    alignas(64) int32_t low[kBlock];
    alignas(64) int32_t high[kBlock];
};

struct SplitTaps {
    SplitTaps(const int16_t* coeffs, int taps) {
        for (int k = 0; k < taps; ++k) {
            high[k] = static_cast<int16_t>((coeffs[k] + 128) >> 8);
            low[k] = static_cast<int16_t>(coeffs[k] - 256 * high[k]);
        }
        if (taps % 2 != 0) low[taps] = high[taps] = 0;
    }
    int16_t low[kMostTaps];
    int16_t high[kMostTaps];
};

// The sums of `count` outputs, step > 0. Pair j of the taps meets the samples at i * step + 2 j. They are copied into as many
// rows as there are different ones: `period` pairs later they are those of output i + advance.
void sumBlock(const int16_t* signal, std::size_t step, const int16_t* coeffs, int taps, int count,
              Sums& sums) {
    const SplitTaps split(coeffs, taps);
    const int pairs = (taps + 1) / 2;
    const int advance = step % 2 == 0 ? 1 : 2;
    const int period = step >= kMostTaps ? pairs : static_cast<int>(step) * advance / 2;
    const int outputs = (count + 15) / 16 * 16;
    const int length = outputs + (pairs - 1) / period * advance;
    const int different = std::min(period, pairs);
    int16_t* row = SE_WRAPPER_STACK_ARRAY(int16_t, 2 * different * length);
    const int16_t* rows[kMostTaps / 2];
    for (int first = 0; first < different; ++first, row += 2 * length) {
        int end = count;  // of the outputs and the later ones whose samples are in this row
        int pair = first;
        for (; pair < pairs; pair += period, end += advance) rows[pair] = row + 2 * (end - count);
        const int last = end - advance - 1;
        const int16_t* const from = signal + 2 * first;
        // The second sample of the very last pair is not read if there is no tap for it.
        const bool half = taps % 2 != 0 && pair - period == pairs - 1;
        g_pair_kernels->copy(from, step, static_cast<std::size_t>(last + !half), row);
        if (half) row[2 * last] = from[static_cast<std::size_t>(last) * step], row[2 * last + 1] = 0;
    }
    g_pair_kernels->sum(rows, split.low, split.high, pairs, outputs, sums.low, sums.high);
}

void store(int16_t* to, __m128i x) {
    _mm_storeu_si128(reinterpret_cast<__m128i*>(to), x);
}

// (256 high + low + 16384) >> 15, saturated, without more than 32 bits.
void narrow(const Sums& sums, int count, int16_t* out) {
    const auto rounded = [&](int i) {
        const __m128i low = _mm_load_si128(reinterpret_cast<const __m128i*>(sums.low + i));
        const __m128i high = _mm_load_si128(reinterpret_cast<const __m128i*>(sums.high + i));
        const __m128i carry = _mm_srai_epi32(_mm_add_epi32(low, _mm_set1_epi32(1 << 14)), 8);
        return _mm_srai_epi32(_mm_add_epi32(high, carry), 7);
    };
    int i = 0;
    for (; i + 8 <= count; i += 8) store(out + i, _mm_packs_epi32(rounded(i), rounded(i + 4)));
    if (i == count) return;
    int16_t last[8];
    store(last, _mm_packs_epi32(rounded(i), rounded(i + 4)));
    std::copy_n(last, count - i, out + i);
}

void filterBlock(const int16_t* signal, const int16_t* coeffs, int taps, int16_t* out, int count,
                 std::size_t step) {
    Sums sums;
    if (taps <= kMostTaps) {
        sumBlock(signal, step, coeffs, taps, count, sums);
        narrow(sums, count, out);
        return;
    }
    int64_t totals[kBlock] = {};
    for (int first = 0; first < taps; first += kMostTaps) {
        sumBlock(signal + first, step, coeffs + first, std::min(kMostTaps, taps - first), count, sums);
        for (int i = 0; i < count; ++i) totals[i] += int64_t{256} * sums.high[i] + sums.low[i];
    }
    for (int i = 0; i < count; ++i) {
        out[i] = static_cast<int16_t>(std::clamp<int64_t>((totals[i] + 16384) >> 15, -32768, 32767));
    }
}

void filterDirectly(const int16_t* signal, const int16_t* coeffs, Span span, int16_t* out, int num_out,
                    std::size_t step) {
    const int taps = span.end - span.first;
    if (taps == 0 || step == 0) {
        int16_t each = 0;
        if (taps > 0) filterBlock(signal + span.first, coeffs + span.first, taps, &each, 1, 1);
        std::fill_n(out, num_out, each);
        return;
    }
    for (int first = 0; first < num_out; first += kBlock) {
        filterBlock(signal + static_cast<std::size_t>(first) * step + span.first, coeffs + span.first, taps,
                    out + first, std::min(kBlock, num_out - first), step);
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
