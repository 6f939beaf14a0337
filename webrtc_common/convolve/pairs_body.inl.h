// The body of the sums of pairs, included beside convolve_body.inl.h; its rules apply here, too.
//
// Each lane holds an output: W samples are W / 2 pairs, each for an output of its own.
#pragma once

namespace {

template <class Lanes, size_t kGroups>
CONVOLVE_INLINE void sumGroups(const int16_t* const* rows, const int16_t* low, const int16_t* high,
                               ptrdiff_t pairs, size_t first, int32_t* low_sums, int32_t* high_sums) {
    Sums<Lanes> sums[kGroups];
    unrolled<kGroups>([&](auto m) CONVOLVE_LAMBDA { sums[m.value] = {Lanes::zero(), Lanes::zero()}; });
    for (ptrdiff_t pair = 0; pair < pairs; ++pair) {
        const int16_t* const row = rows[pair] + 2 * first;
        const auto low_taps = Lanes::pair(low + 2 * pair);
        const auto high_taps = Lanes::pair(high + 2 * pair);
        unrolled<kGroups>([&](auto m) CONVOLVE_LAMBDA {
            typename Lanes::Vector x = Lanes::load(row + Lanes::kOutputs * m.value);
            CONVOLVE_IN_REGISTER(x);
            Lanes::multiplyAdd(sums[m.value].even, x, low_taps);
            Lanes::multiplyAdd(sums[m.value].odd, x, high_taps);
        });
    }
    unrolled<kGroups>([&](auto m) CONVOLVE_LAMBDA {
        const size_t i = first + Lanes::kOutputs / 2 * m.value;
        Lanes::store(low_sums + i, sums[m.value].even);
        Lanes::store(high_sums + i, sums[m.value].odd);
    });
}

// The outputs from `first` on: kGroups vectors at a time while there are as many, then one fewer and so on.
template <class Lanes, size_t kGroups>
CONVOLVE_INLINE void sumFrom(size_t first, const int16_t* const* rows, const int16_t* low,
                             const int16_t* high, ptrdiff_t pairs, size_t outputs, int32_t* low_sums,
                             int32_t* high_sums) {
    constexpr size_t kTogether = kGroups * Lanes::kOutputs / 2;
    for (; first + kTogether <= outputs; first += kTogether)
        sumGroups<Lanes, kGroups>(rows, low, high, pairs, first, low_sums, high_sums);
    if constexpr (kGroups > 1)
        sumFrom<Lanes, kGroups - 1>(first, rows, low, high, pairs, outputs, low_sums, high_sums);
}

// The pairs for all outputs.
CONVOLVE_INLINE void copyPairs(const int16_t* from, size_t step, size_t count, int16_t* to) {
    size_t i = Widest::collectPairs(from, step, count, to);
    for (; i < count; ++i) __builtin_memcpy(to + 2 * i, from + i * step, 2 * sizeof *to);
}

}  // namespace

// The kernels of a source file for exact sums. They are declared before.
#define PAIR_KERNELS(set)                                                                                   \
    void copy_pairs_##set(const int16_t* from, size_t step, size_t count, int16_t* to) {                    \
        copyPairs(from, step, count, to);                                                                   \
        Widest::clearUpperHalves();                                                                         \
    }                                                                                                       \
    void sum_pairs_##set(const int16_t* const* rows, const int16_t* low, const int16_t* high, int pairs,    \
                         int outputs, int32_t* low_sums, int32_t* high_sums) {                              \
        sumFrom<Widest, Widest::kGroups>(0, rows, low, high, pairs, static_cast<size_t>(outputs), low_sums, \
                                         high_sums);                                                        \
        Widest::clearUpperHalves();                                                                         \
    }
