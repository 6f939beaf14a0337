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

// Two sums for each output of a block: the exact one is 256 high + low. Both parts of a coefficient are -128 to 128, so
// with this number of taps 32 bits hold each of the two, and high + low / 256.
constexpr int kMostTaps = 504;
constexpr int kBlock = 160;
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
        const int whole = half ? last : last + 1;
        g_pair_kernels->copy(from, step, static_cast<std::size_t>(whole), row);
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

// What the sums of several parts of a filter add up to: 2^24 upper + 2^8 lower + rest, rounding included.
class Totals {
  public:
    Totals() { std::fill_n(rest_, kBlock, 1 << 14); }

    void add(const Sums& sums, int count) {
        for (int i = 0; i < count; ++i) {
            const int32_t low = sums.low[i] + rest_[i];
            const int32_t high = sums.high[i] + (low >> 8);
            rest_[i] = low & 0xff;
            lower_[i] += high & 0xffff;
            upper_[i] += high >> 16;
        }
    }

    void narrow(int count, int16_t* out) const {
        for (int i = 0; i < count; ++i) {
            const int32_t upper =
                std::clamp(upper_[i] + (lower_[i] >> 16), -65, 64);  // beyond, `out` saturates
            const int32_t value = 512 * upper + ((lower_[i] & 0xffff) >> 7);
            out[i] = static_cast<int16_t>(std::clamp(value, -32768, 32767));
        }
    }

  private:
    int32_t upper_[kBlock] = {}, lower_[kBlock] = {}, rest_[kBlock];
};

void filterBlock(const int16_t* signal, const int16_t* coeffs, int taps, int16_t* out, int count,
                 std::size_t step) {
    Sums sums;
    if (taps <= kMostTaps) {
        sumBlock(signal, step, coeffs, taps, count, sums);
        narrow(sums, count, out);
        return;
    }
    Totals totals;
    for (int first = 0; first < taps; first += kMostTaps) {
        sumBlock(signal + first, step, coeffs + first, std::min(kMostTaps, taps - first), count, sums);
        totals.add(sums, count);
    }
    totals.narrow(count, out);
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
    const int block =
        step < 16 ? kBlock : 64;  // with longer steps hardly any output shares its samples with others
    for (int first = 0; first < num_out; first += block) {
        filterBlock(signal + static_cast<std::size_t>(first) * step + span.first, coeffs + span.first, taps,
                    out + first, std::min(block, num_out - first), step);
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
