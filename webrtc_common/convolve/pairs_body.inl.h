// The exact filters of a source file, included after convolve_body.inl.h; its rules apply here, too.
#pragma once

#include "webrtc_common/convolve/pairs_in_place.inl.h"
#include "webrtc_common/convolve/pairs_rows.inl.h"
#include "webrtc_common/convolve/pairs_sums.inl.h"
#include "webrtc_common/convolve/pairs_windows.inl.h"

namespace {

template <class Lanes, bool kBoth, class Output>
CONVOLVE_INLINE void sumPairs(const int16_t* signal, size_t step, const PairTaps& split, int taps,
                              const Output& output) {
    if constexpr (Lanes::kLongestWindowStep > 0) {
        if (step <= Lanes::kLongestWindowStep) {
            const size_t samples = (output.count - 1) * step + static_cast<size_t>(taps);
            return sumWindowsFrom<Lanes, kBoth, Lanes::kGroups>(0, signal, static_cast<ptrdiff_t>(samples),
                                                                static_cast<ptrdiff_t>(step), split,
                                                                (taps + 1) / 2, output);
        }
    } else if (taps >= 4) {
        if (step == 2) return filterInPlace<Lanes, kBoth, 2>(signal, split, taps, output);
        if (step == 3) return filterInPlace<Lanes, kBoth, 3>(signal, split, taps, output);
        if (step == 4) return filterInPlace<Lanes, kBoth, 4>(signal, split, taps, output);
    }
    filterByRows<kBoth>(signal, step, split, taps, output);
}

template <class Output>
CONVOLVE_INLINE void filterPairs(const int16_t* signal, size_t step, const int16_t* coeffs, int taps,
                                 const Output& output) {
    PairTaps split;
    splitTaps(coeffs, taps, split);
    if (split.fit) {
        sumPairs<Widest, false>(signal, step, split, taps, output);
    } else {
        sumPairs<Widest, true>(signal, step, split, taps, output);
    }
    Widest::clearUpperHalves();
}

}  // namespace

// The kernels of a source file for exact sums. They are declared before.
#define PAIR_KERNELS(set)                                                                                   \
    void filter_pairs_##set(const int16_t* signal, size_t step, const int16_t* coeffs, int taps, int count, \
                            int16_t* out) {                                                                 \
        filterPairs(signal, step, coeffs, taps, NarrowedSums{out, static_cast<size_t>(count)});             \
    }                                                                                                       \
    void total_pairs_##set(const int16_t* signal, size_t step, const int16_t* coeffs, int taps, int count,  \
                           quill::media::se_wrapper::PairTotals* totals) {                                  \
        filterPairs(signal, step, coeffs, taps, TotalledSums{*totals, static_cast<size_t>(count)});         \
    }
