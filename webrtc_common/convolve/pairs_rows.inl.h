// Exact filters of any step: the pairs of samples are copied to where loads find those of adjoining outputs.
#pragma once

#include "webrtc_common/convolve/pairs_sums.inl.h"

namespace {

template <class Lanes, bool kBoth, size_t kGroups, class Output>
CONVOLVE_INLINE void sumRows(const int16_t* const* rows, const PairTaps& taps, ptrdiff_t pairs, size_t first,
                             const Output& output) {
    PairSums<Lanes> sums[kGroups];
    unrolled<kGroups>([&](auto m) CONVOLVE_LAMBDA { sums[m.value] = {Lanes::zero(), Lanes::zero()}; });
    for (ptrdiff_t pair = 0; pair < pairs; ++pair) {
        const int16_t* const row = rows[pair] + 2 * first;
        const auto pair_taps = pairOfTaps<Lanes, kBoth>(taps, pair);
        unrolled<kGroups>([&](auto m) CONVOLVE_LAMBDA {
            addPair<Lanes, kBoth>(sums[m.value], Lanes::load(row + Lanes::kOutputs * m.value), pair_taps);
        });
    }
    putSums<Lanes, kBoth>(sums, first, output);
}

// The outputs from `first` on: kGroups vectors at a time while there are as many, then fewer.
template <class Lanes, bool kBoth, size_t kGroups, class Output>
CONVOLVE_INLINE void sumRowsFrom(size_t first, const int16_t* const* rows, const PairTaps& taps,
                                 ptrdiff_t pairs, const Output& output) {
    constexpr size_t kEach = Lanes::kOutputs / 2;
    for (; first + kEach * (kGroups - 1) < output.count; first += kEach * kGroups)
        sumRows<Lanes, kBoth, kGroups>(rows, taps, pairs, first, output);
    constexpr size_t kFewer = kGroups > Lanes::kGroups ? Lanes::kGroups : kGroups - 1;
    if constexpr (kGroups > 1) sumRowsFrom<Lanes, kBoth, kFewer>(first, rows, taps, pairs, output);
}

// to[2 i] = from[i * step], to[2 i + 1] = from[i * step + 1] for i < count. The last value is 0 without being read
// unless `whole`.
CONVOLVE_INLINE void copyPairs(const int16_t* from, size_t step, size_t count, bool whole, int16_t* to) {
    const size_t pairs = whole ? count : count - 1;
    size_t i = Widest::collectPairs(from, step, pairs, to);
    for (; i < pairs; ++i) __builtin_memcpy(to + 2 * i, from + i * step, 2 * sizeof *to);
    if (!whole) to[2 * pairs] = from[pairs * step], to[2 * pairs + 1] = 0;
}

// Pair j of the taps meets the samples at i * step + 2 j. They are copied into as many rows as there are different
// ones: `period` pairs later they are those of output i + advance.
template <bool kBoth, class Output>
CONVOLVE_INLINE void filterByRows(const int16_t* signal, size_t step, const PairTaps& split, int taps,
                                  const Output& output) {
    const size_t count = output.count;
    constexpr size_t kEach = Widest::kOutputs / 2;
    constexpr size_t kMostPairs = kMostPairTaps / 2;
    const size_t pairs = (static_cast<size_t>(taps) + 1) / 2;
    const int16_t* rows[kMostPairs];
    const size_t advance = step % 2 == 0 ? 1 : 2;
    const size_t period = step >= kMostPairs ? pairs : step * advance / 2;
    const size_t outputs = (count + kEach - 1) / kEach * kEach;
    const size_t length = outputs + (pairs - 1) / period * advance;
    const size_t different = period < pairs ? period : pairs;
    auto* row = static_cast<int16_t*>(__builtin_alloca(2 * different * length * sizeof(int16_t)));
    for (size_t first = 0; first < different; ++first, row += 2 * length) {
        size_t end = count;  // of the outputs and the later ones whose samples are in this row
        size_t pair = first;
        for (; pair < pairs; pair += period, end += advance) rows[pair] = row + 2 * (end - count);
        const bool last = pair - period == pairs - 1;
        copyPairs(signal + 2 * first, step, end - advance, taps % 2 == 0 || !last, row);
    }
    constexpr size_t kGroups = kBoth ? Widest::kGroups : 2 * Widest::kGroups;
    sumRowsFrom<Widest, kBoth, kGroups>(0, rows, split, static_cast<ptrdiff_t>(pairs), output);
}

}  // namespace
