// Real FIR filter: through the correlation kernel where the lengths allow, else directly.
// It must not allocate.
#include "webrtc_common/se_wrapper/dsp/compute_rfir.h"

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

constexpr int kBlock = kMostPairOutputs;

// Rounded before.
void narrow(const PairTotals& totals, int count, int16_t* out) {
    for (int i = 0; i < count; ++i) {
        const int32_t upper =
            std::clamp(totals.upper[i] + (totals.lower[i] >> 16), -65, 64);  // beyond, `out` saturates
        const int32_t value = 512 * upper + ((totals.lower[i] & 0xffff) >> 7);
        out[i] = static_cast<int16_t>(std::clamp(value, -32768, 32767));
    }
}

void filterBlock(const int16_t* signal, const int16_t* coeffs, int taps, int16_t* out, int count,
                 std::size_t step) {
    if (taps <= kMostPairTaps) {
        g_pair_kernels->filter(signal, step, coeffs, taps, count, out);
        return;
    }
    PairTotals totals = {};
    std::fill_n(totals.rest, kBlock, 1 << 14);
    for (int first = 0; first < taps; first += kMostPairTaps) {
        const int part = std::min(kMostPairTaps, taps - first);
        g_pair_kernels->total(signal + first, step, coeffs + first, part, count, &totals);
    }
    narrow(totals, count, out);
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
