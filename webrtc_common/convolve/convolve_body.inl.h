// The body of the correlation kernels, included by one source file an instruction set, after the lanes that it
// computes in: `Widest` names the widest. Nothing here may be shared between source files: no name with
// external linkage, nothing from the standard library, everything inlined. Else the linker might keep the copy
// built for one processor and give it to another.
//
// Each lane holds an output. The W samples loaded at an even offset k are W / 2 pairs. In a group of W outputs each
// of them contributes to one even output with taps k and k + 1, and to the odd output beside it with taps k - 1 and k.
// The first tap has no tap before it and the last one none behind it: zeros stand there, in registers. The samples at
// offset k + W m also serve the taps k + W s of group m - s, so several groups and several sets of taps together need
// much less than one load for each multiplication. Sums modulo 2^32 may be taken in any order.
#pragma once

namespace {

// Running sums of a group: even outputs and odd outputs.
template <class Lanes>
struct Sums {
    typename Lanes::Vector even;
    typename Lanes::Vector odd;
};

// How many sums each group has, to which pairs of taps are added in turn. Together about as many as hide the latency
// of a multiplication, so that few additions wait for the one before.
constexpr size_t chains(size_t sums, size_t groups) {
    const size_t count = sums / (2 * groups);
    return count < 1 ? 1 : count > 4 ? 4 : count;
}

template <size_t kValue>
struct Index {
    static constexpr size_t value = kValue;
};

// each(Index<0>()), each(Index<1>()) and so on. Constant indices from the first pass of the compiler on keep
// arrays of vectors in registers; a loop that is unrolled later leaves them on the stack.
template <size_t kCount, size_t kFirst = 0, class Each>
CONVOLVE_INLINE void unrolled(const Each& each) {
    if constexpr (kFirst < kCount) {
        each(Index<kFirst>());
        unrolled<kCount, kFirst + 1>(each);
    }
}

// A pair of taps of each of kSets sets, which stand W taps apart, for kGroups adjoining groups. `before` points at the
// tap before coeffs[0] and coeffs[0] itself. samples(m): those of group m.
template <class Lanes, size_t kSets, size_t kPair, size_t kGroups, size_t kChains, class Samples>
CONVOLVE_INLINE void addPair(Sums<Lanes> (&sums)[kGroups][kChains], const int16_t* coeffs,
                             const int16_t* before, const Samples& samples) {
    typename Lanes::Vector even[kSets], odd[kSets];
    unrolled<kSets>([&](auto s) CONVOLVE_LAMBDA {
        const int16_t* const set = coeffs + Lanes::kOutputs * s.value;
        even[s.value] = Lanes::pair(set);
        odd[s.value] = Lanes::pair(s.value == 0 ? before : set - 1);
    });
    unrolled<kGroups + kSets - 1>([&](auto m) CONVOLVE_LAMBDA {
        typename Lanes::Vector x = samples(m);
        // Else gcc uses a memory operand for each use, which is a load for each multiplication.
        CONVOLVE_IN_REGISTER(x);
        unrolled<kSets>([&](auto s) CONVOLVE_LAMBDA {
            constexpr size_t group = decltype(m)::value - decltype(s)::value;  // below 0: beyond kGroups, too
            if constexpr (group < kGroups) {
                auto& sum = sums[group][(kPair + s.value) % kChains];
                Lanes::multiplyAdd(sum.even, x, even[s.value]);
                Lanes::multiplyAdd(sum.odd, x, odd[s.value]);
            }
        });
    });
}

// Eight taps of each of kSets sets. `part`: nothing, or which outputs of the last group there are; for nothing else
// are the last samples read. Where more sets could share a load, every second pair shifts the samples of the one
// before instead.
template <class Lanes, size_t kSets, size_t kGroups, size_t kChains, class... Part>
CONVOLVE_INLINE void addStep(Sums<Lanes> (&sums)[kGroups][kChains], const int16_t* coeffs,
                             const int16_t* before, const int16_t* signal, Part... part) {
    constexpr size_t kLast = kGroups + kSets - 2;
    typename Lanes::Vector x[kLast + 1];
    unrolled<4>([&](auto pair) CONVOLVE_LAMBDA {
        constexpr size_t kPair = decltype(pair)::value;
        const int16_t* from = signal + 2 * kPair;
        CONVOLVE_NEW_ADDRESS(from);  // else gcc keeps samples from one step for the next, on the stack
        const auto samples = [&](auto m) CONVOLVE_LAMBDA {
            constexpr size_t kM = decltype(m)::value;
            const int16_t* const address = from + Lanes::kOutputs * kM;
            if constexpr (kM == kLast) {
                return x[kM] = Lanes::load(address, part...);
            } else {
                if constexpr (kSets < Lanes::kSets) {
                    if constexpr (kPair % 2 == 1) return Lanes::shifted(x[kM], x[kM + 1]);
                }
                return x[kM] = Lanes::load(address);
            }
        };
        addPair<Lanes, kSets, kPair>(sums, coeffs + 2 * kPair, kPair == 0 ? before : coeffs + 2 * kPair - 1,
                                     samples);
    });
}

// All steps of eight taps for kGroups adjoining groups: pairs of sets, if lanes have them, and alone the steps that
// have no partner one set further. Counted in signed numbers: with unsigned ones gcc keeps the sums on the stack
// between the loops.
template <class Lanes, size_t kGroups, size_t kChains, class... Part>
CONVOLVE_INLINE void addSteps(Sums<Lanes> (&sums)[kGroups][kChains], const int16_t* coeffs,
                              const int16_t* signal, ptrdiff_t steps, Part... part) {
    const uint32_t zero_and_first_tap = static_cast<uint32_t>(coeffs[0]) << 16;
    const int16_t* before = reinterpret_cast<const int16_t*>(&zero_and_first_tap);
    const auto add = [&](auto sets, ptrdiff_t step) CONVOLVE_LAMBDA {
        addStep<Lanes, decltype(sets)::value>(sums, coeffs + 8 * step, before, signal + 8 * step, part...);
        before = coeffs + 8 * step + 7;
    };
    if constexpr (Lanes::kSets == 1) {
        for (ptrdiff_t step = 0; step < steps; ++step) add(Index<1>(), step);
    } else {
        constexpr ptrdiff_t kSet = Lanes::kOutputs / 8;
        for (ptrdiff_t first = 0; first < steps; first += 2 * kSet) {
            if (first > 0) before = coeffs + 8 * first - 1;
            const ptrdiff_t left = steps - first;
            ptrdiff_t s = 0;
            for (; s < kSet && s + kSet < left; ++s) add(Index<2>(), first + s);
            for (; s < kSet && s < left; ++s) add(Index<1>(), first + s);
        }
    }
}

// kGroups adjoining groups from their first tap to their last, passed to `output`.
template <class Lanes, size_t kGroups, class Output, class... Part>
CONVOLVE_INLINE void convolveGroups(const int16_t* coeffs, const int16_t* signal, size_t steps,
                                    size_t first_output, const Output& output, Part... part) {
    constexpr size_t kChains = chains(Lanes::kSums, kGroups);
    Sums<Lanes> sums[kGroups][kChains];
    const auto last_tap_and_zero = Lanes::all(static_cast<uint16_t>(coeffs[8 * steps - 1]));
    const auto begin = [&](auto m, auto... of) CONVOLVE_LAMBDA {
        unrolled<kChains>([&](auto chain) CONVOLVE_LAMBDA {
            sums[m.value][chain.value] = {Lanes::zero(), Lanes::zero()};
        });
        const int16_t* const samples = signal + first_output + 8 * steps + Lanes::kOutputs * m.value;
        Lanes::multiplyAdd(sums[m.value][0].odd, Lanes::load(samples, of...), last_tap_and_zero);
    };
    unrolled<kGroups - 1>(begin);
    begin(Index<kGroups - 1>(), part...);
    addSteps(sums, coeffs, signal + first_output, static_cast<ptrdiff_t>(steps), part...);
    const auto put = [&](auto m, auto... of) CONVOLVE_LAMBDA {
        Sums<Lanes> sum = sums[m.value][0];
        unrolled<kChains, 1>([&](auto chain) CONVOLVE_LAMBDA {
            sum.even = Lanes::add(sum.even, sums[m.value][chain.value].even);
            sum.odd = Lanes::add(sum.odd, sums[m.value][chain.value].odd);
        });
        output.template put<Lanes>(first_output + Lanes::kOutputs * m.value, sum.even, sum.odd, of...);
    };
    unrolled<kGroups - 1>(put);
    put(Index<kGroups - 1>(), part...);
}

// The number of groups of eight for `count`, at least one.
CONVOLVE_INLINE size_t eights(int count) {
    return count > 8 ? (static_cast<size_t>(count) + 7) / 8 : 1;
}

// At most kGroups groups, the last of which may be incomplete. needs: outputs > 0.
template <class Lanes, size_t kGroups, class Output>
CONVOLVE_INLINE void convolvePart(size_t first, const int16_t* coeffs, const int16_t* signal, size_t outputs,
                                  size_t steps, const Output& output) {
    constexpr size_t kBefore = (kGroups - 1) * Lanes::kOutputs;
    if constexpr (kGroups > 1) {
        if (outputs <= kBefore)
            return convolvePart<Lanes, kGroups - 1>(first, coeffs, signal, outputs, steps, output);
    }
    convolveGroups<Lanes, kGroups>(coeffs, signal, steps, first, output,
                                   Lanes::firstOutputs(outputs - kBefore));
}

// The outputs from `first` on: kGroups groups at a time while there are as many. What is left: with lanes that
// can be left out, one incomplete last group; else one group fewer and so on down to one, then narrower ones.
template <class Lanes, size_t kGroups, class Output>
CONVOLVE_INLINE void convolveFrom(size_t first, const int16_t* coeffs, const int16_t* signal, size_t outputs,
                                  size_t steps, const Output& output) {
    constexpr size_t kTogether = kGroups * Lanes::kOutputs;
    for (; first + kTogether <= outputs; first += kTogether)
        convolveGroups<Lanes, kGroups>(coeffs, signal, steps, first, output);
    if constexpr (Lanes::kCanBePart) {
        if (first < outputs)
            convolvePart<Lanes, kGroups>(first, coeffs, signal, outputs - first, steps, output);
    } else if constexpr (kGroups > 1) {
        convolveFrom<Lanes, kGroups - 1>(first, coeffs, signal, outputs, steps, output);
    } else if constexpr (Lanes::kOutputs > 8) {
        convolveFrom<typename Lanes::Narrower, 1>(first, coeffs, signal, outputs, steps, output);
    }
}

template <class Output>
CONVOLVE_INLINE void convolve(const int16_t* coeffs, const int16_t* signal, int num_out, int num_taps,
                              const Output& output) {
    convolveFrom<Widest, Widest::kGroups>(0, coeffs, signal, 8 * eights(num_out), eights(num_taps), output);
}

// Rounded Q15 values, narrowed with saturation.
struct NarrowedOutput {
    int16_t* out;

    template <class Lanes>
    static CONVOLVE_INLINE typename Lanes::Vector rounded(typename Lanes::Vector sums) {
        return Lanes::shiftRight(Lanes::add(sums, Lanes::all(1 << 14)), _mm_cvtsi32_si128(15));
    }
    template <class Lanes, class... Part>
    CONVOLVE_INLINE void put(size_t i, typename Lanes::Vector even, typename Lanes::Vector odd,
                             Part... part) const {
        Lanes::storeNarrowed(out + i, rounded<Lanes>(even), rounded<Lanes>(odd), part...);
    }
};

// Rounded values, shifted right and left. The vector shifts give 0 for a count above 31, -1 included, which
// is just what the rounding term of a right shift by 0 must be.
struct ShiftedOutput {
    int32_t* out;
    int rounding;
    __m128i right, left;

    CONVOLVE_INLINE ShiftedOutput(int32_t* o, int shift_right, int shift_left)
        : out(o),
          rounding(_mm_cvtsi128_si32(
              _mm_sll_epi32(_mm_cvtsi32_si128(1), count(static_cast<uint32_t>(shift_right) - 1u)))),
          right(count(static_cast<uint32_t>(shift_right))),
          left(count(static_cast<uint32_t>(shift_left))) {}

    static CONVOLVE_INLINE __m128i count(uint32_t shift) {
        return _mm_cvtsi32_si128(static_cast<int>(shift));
    }
    template <class Lanes>
    CONVOLVE_INLINE typename Lanes::Vector shifted(typename Lanes::Vector sums) const {
        return Lanes::shiftLeft(Lanes::shiftRight(Lanes::add(sums, Lanes::all(rounding)), right), left);
    }
    template <class Lanes, class... Part>
    CONVOLVE_INLINE void put(size_t i, typename Lanes::Vector even, typename Lanes::Vector odd,
                             Part... part) const {
        Lanes::storeWide(out + i, shifted<Lanes>(even), shifted<Lanes>(odd), part...);
    }
};

}  // namespace

// The two functions of a source file, under the names given. They are declared before.
#define CONVOLVE_FUNCTIONS(i16_i16, i16_i32)                                                               \
    void i16_i16(const int16_t* coeffs, const int16_t* signal, int16_t* out, int num_out, int num_taps) {  \
        convolve(coeffs, signal, num_out, num_taps, NarrowedOutput{out});                                  \
        Widest::clearUpperHalves();                                                                        \
    }                                                                                                      \
    void i16_i32(const int16_t* coeffs, const int16_t* signal, int32_t* out, int shift_right, int num_out, \
                 int num_taps, int shift_left) {                                                           \
        convolve(coeffs, signal, num_out, num_taps, ShiftedOutput(out, shift_right, shift_left));          \
        Widest::clearUpperHalves();                                                                        \
    }
