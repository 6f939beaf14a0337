// Exact filters of small steps in registers of 128 and 256 bits. Nothing is copied, and samples stay as they are in memory.
//
// For four adjoining outputs, one in each lane, eight samples from an even place t on are loaded: lane l holds the pair at
// t + 2 l. Its output begins kStep * l samples later than that of lane 0, so the pair meets the taps from
// t - (kStep - 2) * l on. The taps are rearranged instead of the samples, once for all vectors of outputs, with zeros for
// those that do not exist.
#pragma once

#include "webrtc_common/convolve/pairs_sums.inl.h"

namespace {

// How many taps the last lane is behind the first.
template <class Lanes, size_t kStep>
constexpr ptrdiff_t kLag = static_cast<ptrdiff_t>((Lanes::kOutputs / 2 - 1) * (kStep - 2));

// The shuffle of eight taps that gives the last pair of them to the first of four lanes, and so on.
template <size_t kStep>
CONVOLVE_INLINE __m128i tapsToLanes() {
    const auto pair = [](int lane) CONVOLVE_LAMBDA {
        return 0x03020100 + 0x04040404 * (3 - lane) * static_cast<int>(kStep - 2) / 2;
    };
    return _mm_setr_epi32(pair(0), pair(1), pair(2), pair(3));
}

// The taps of all lanes for the samples at t.
template <class Lanes, bool kBoth, size_t kStep>
CONVOLVE_INLINE PairSums<Lanes> tapsInLanes(const PairTaps& split, ptrdiff_t t, __m128i to_lanes) {
    if constexpr (kStep == 2) return pairOfTaps<Lanes, kBoth>(split, t / 2);
    const int16_t* const of_last_lane = split.whole() + t - kLag<Lanes, kStep>;
    const auto whole = Lanes::template tapsOfFours<4 * (kStep - 2)>(of_last_lane, to_lanes);
    if constexpr (kBoth) return {whole, Lanes::upperParts(whole)};
    return {whole, whole};
}

template <class Lanes, bool kBoth, size_t kStep, size_t kGroups>
CONVOLVE_INLINE void addInPlace(PairSums<Lanes> (&sums)[kGroups], const int16_t* signal,
                                const PairTaps& split, ptrdiff_t taps) {
    constexpr size_t kApart = Lanes::kOutputs / 2 * kStep;
    const __m128i to_lanes = tapsToLanes<kStep>();
    const auto add = [&](const int16_t* from, const PairSums<Lanes>& lane_taps) CONVOLVE_LAMBDA {
        unrolled<kGroups>([&](auto m) CONVOLVE_LAMBDA {
            addPair<Lanes, kBoth>(sums[m.value], Lanes::load(from + kApart * m.value), lane_taps);
        });
    };
    const ptrdiff_t last = taps - 1 + kLag<Lanes, kStep>;
    ptrdiff_t t = 0;
    for (; t < last; t += 2) add(signal + t, tapsInLanes<Lanes, kBoth, kStep>(split, t, to_lanes));
    // Only the first tap of each lane exists. It meets the second sample of a pair, as what follows may not be read.
    if (t == last) {
        auto first_taps = tapsInLanes<Lanes, kBoth, kStep>(split, t, to_lanes);
        const __m128i half = _mm_cvtsi32_si128(16);
        first_taps = {Lanes::shiftLeft(first_taps.whole, half), Lanes::shiftLeft(first_taps.upper, half)};
        add(signal + t - 1, first_taps);
    }
}

// A step of 4 in wide registers, where the last lane would be too far behind: every other pair of two vectors is a pair of
// each output, the pairs between are the next ones. needs: taps >= 4.
template <class Lanes, bool kBoth, size_t kGroups>
CONVOLVE_INLINE void addEveryOther(PairSums<Lanes> (&sums)[kGroups], const int16_t* signal,
                                   const PairTaps& split, ptrdiff_t taps) {
    constexpr size_t kApart = 2 * Lanes::kOutputs;
    const auto add = [&](const int16_t* from, const PairSums<Lanes>& even_taps,
                         const PairSums<Lanes>& odd_taps) CONVOLVE_LAMBDA {
        unrolled<kGroups>([&](auto m) CONVOLVE_LAMBDA {
            auto low = Lanes::load(from + kApart * m.value);
            auto high = Lanes::load(from + kApart * m.value + Lanes::kOutputs);
            CONVOLVE_IN_REGISTER(low);
            CONVOLVE_IN_REGISTER(high);
            addPair<Lanes, kBoth>(sums[m.value], Lanes::evenPairs(low, high), even_taps);
            addPair<Lanes, kBoth>(sums[m.value], Lanes::oddPairs(low, high), odd_taps);
        });
    };
    ptrdiff_t t = 0;
    for (; t + 4 <= taps; t += 4)
        add(signal + t, pairOfTaps<Lanes, kBoth>(split, t / 2), pairOfTaps<Lanes, kBoth>(split, t / 2 + 1));
    // The last four taps, of which the first ones have been added.
    if (t < taps) {
        uint64_t four;
        __builtin_memcpy(&four, split.whole() + taps - 4, sizeof four);
        const ptrdiff_t added = 16 * (t + 4 - taps);
        four = four >> added << added;
        const auto pair = [](uint64_t bits) CONVOLVE_LAMBDA {
            const auto whole = Lanes::all(static_cast<int>(static_cast<uint32_t>(bits)));
            if constexpr (kBoth) return PairSums<Lanes>{whole, Lanes::upperParts(whole)};
            return PairSums<Lanes>{whole, whole};
        };
        add(signal + taps - 4, pair(four), pair(four >> 32));
    }
    unrolled<kGroups>([&](auto m) CONVOLVE_LAMBDA {
        sums[m.value] = {Lanes::inOrder(sums[m.value].whole), Lanes::inOrder(sums[m.value].upper)};
    });
}

// kGroups vectors of outputs from `first` on. `signal` holds the samples of all of their lanes. `part`: nothing, or how many
// outputs of the only vector there are.
template <class Lanes, bool kBoth, size_t kStep, size_t kGroups, class Output, class... Part>
CONVOLVE_INLINE void sumInPlace(const int16_t* signal, const PairTaps& split, int taps, size_t first,
                                const Output& output, Part... part) {
    PairSums<Lanes> sums[kGroups];
    unrolled<kGroups>([&](auto m) CONVOLVE_LAMBDA { sums[m.value] = {Lanes::zero(), Lanes::zero()}; });
    if constexpr (kStep == Lanes::kEveryOtherStep) {
        addEveryOther<Lanes, kBoth>(sums, signal, split, taps);
    } else {
        addInPlace<Lanes, kBoth, kStep>(sums, signal, split, taps);
    }
    unrolled<kGroups>([&](auto m) CONVOLVE_LAMBDA {
        const size_t i = first + Lanes::kOutputs / 2 * m.value;
        output.template put<Lanes, kBoth>(i, sums[m.value], part...);
    });
}

// The whole vectors of outputs from `first` on: kGroups at a time while there are as many, then half as many and so on.
// Returns the first output that is left.
template <class Lanes, bool kBoth, size_t kStep, size_t kGroups, class Output>
CONVOLVE_INLINE size_t sumInPlaceFrom(size_t first, const int16_t* signal, const PairTaps& split, int taps,
                                      const Output& output) {
    constexpr size_t kTogether = Lanes::kOutputs / 2 * kGroups;
    for (; first + kTogether <= output.count; first += kTogether)
        sumInPlace<Lanes, kBoth, kStep, kGroups>(signal + first * kStep, split, taps, first, output);
    if constexpr (kGroups > 1)
        return sumInPlaceFrom<Lanes, kBoth, kStep, kGroups / 2>(first, signal, split, taps, output);
    return first;
}

// needs: taps >= 4.
template <class Lanes, bool kBoth, size_t kStep, class Output>
CONVOLVE_INLINE void filterInPlace(const int16_t* signal, const PairTaps& split, int taps,
                                   const Output& output) {
    constexpr size_t kGroups = kBoth ? Lanes::kGroups : 2 * Lanes::kGroups;
    const size_t first = sumInPlaceFrom<Lanes, kBoth, kStep, kGroups>(0, signal, split, taps, output);
    if (first == output.count) return;
    // Zeros stand for the samples of the lanes whose outputs do not exist.
    int16_t last[(Lanes::kOutputs / 2 - 1) * kStep + kMostPairTaps] = {};
    const size_t samples = (output.count - first - 1) * kStep + static_cast<size_t>(taps);
    __builtin_memcpy(last, signal + first * kStep, samples * sizeof *last);
    sumInPlace<Lanes, kBoth, kStep, 1>(last, split, taps, first, output, output.count - first);
}

}  // namespace
