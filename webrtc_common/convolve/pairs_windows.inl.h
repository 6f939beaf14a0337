// Exact filters of small steps in registers of 512 bits: the samples of 16 outputs are picked out of a window of 64,
// which serves several pairs of taps. Nothing is copied.
#pragma once

#include "webrtc_common/convolve/pairs_sums.inl.h"

namespace {

// The windows of kGroups vectors of outputs from `first` on. `signal` holds `samples`.
template <class Lanes, bool kBoth, size_t kGroups, class Output>
CONVOLVE_INLINE void sumWindows(const int16_t* signal, ptrdiff_t samples, ptrdiff_t step,
                                const PairTaps& taps, ptrdiff_t pairs, size_t first, const Output& output) {
    const ptrdiff_t apart = static_cast<ptrdiff_t>(Lanes::kOutputs / 2) * step;
    const ptrdiff_t together = Lanes::pairsInWindow(step);
    const ptrdiff_t all = apart * static_cast<ptrdiff_t>(kGroups - 1) + Lanes::kWindow;
    PairSums<Lanes> sums[kGroups];
    unrolled<kGroups>([&](auto m) CONVOLVE_LAMBDA { sums[m.value] = {Lanes::zero(), Lanes::zero()}; });
    for (ptrdiff_t begin = 0; begin < pairs; begin += together) {
        const ptrdiff_t position = static_cast<ptrdiff_t>(first) * step + 2 * begin;
        const int16_t* from = signal + position;
        ptrdiff_t left = samples - position;
        CONVOLVE_NEW_ADDRESS(from);
        CONVOLVE_NEW_ADDRESS(left);
        const bool whole = left >= all;
        typename Lanes::Window windows[kGroups];
        unrolled<kGroups>([&](auto m) CONVOLVE_LAMBDA {
            windows[m.value] = whole ? Lanes::window(from) : Lanes::window(from, left);
            from += apart;
            left -= apart;
        });
        typename Lanes::Vector places = Lanes::firstPlaces(step);
        const ptrdiff_t end = begin + together < pairs ? begin + together : pairs;
        for (ptrdiff_t pair = begin; pair < end; ++pair) {
            const auto pair_taps = pairOfTaps<Lanes, kBoth>(taps, pair);
            unrolled<kGroups>([&](auto m) CONVOLVE_LAMBDA {
                addPair<Lanes, kBoth>(sums[m.value], Lanes::pick(windows[m.value], places), pair_taps);
            });
            places = Lanes::nextPlaces(places);
        }
    }
    putSums<Lanes, kBoth>(sums, first, output);
}

// kGroups vectors at a time while there are as many outputs left, then one fewer and so on.
template <class Lanes, bool kBoth, size_t kGroups, class Output>
CONVOLVE_INLINE void sumWindowsFrom(size_t first, const int16_t* signal, ptrdiff_t samples, ptrdiff_t step,
                                    const PairTaps& taps, ptrdiff_t pairs, const Output& output) {
    constexpr size_t kEach = Lanes::kOutputs / 2;
    for (; first + kEach * (kGroups - 1) < output.count; first += kEach * kGroups)
        sumWindows<Lanes, kBoth, kGroups>(signal, samples, step, taps, pairs, first, output);
    if constexpr (kGroups > 1)
        sumWindowsFrom<Lanes, kBoth, kGroups - 1>(first, signal, samples, step, taps, pairs, output);
}

}  // namespace
