// Taps, sums and results of the exact filters, included beside convolve_body.inl.h; its rules apply here, too.
//
// Each lane holds an output: W samples are W / 2 pairs, each for an output of its own. Where 32 bits might not hold the
// sums, there are two of each: modulo 2^32 with the taps as they are, and with their upper parts alone. The lower parts
// are -128 to 127, so 32 bits hold their sum for up to kMostPairTaps taps: the first less 256 times the second.
#pragma once

#include "webrtc_common/convolve/pairs.h"

namespace {

using quill::media::se_wrapper::kMostPairTaps;
using quill::media::se_wrapper::PairTotals;

struct PairTaps {
    static constexpr int kZeros = 16;  // before the first and after the last tap
    alignas(16) int16_t padded[kZeros + kMostPairTaps + kZeros];
    alignas(16) int16_t upper[kMostPairTaps + 8];  // (tap + 128) >> 8, -128 to 128; zeros follow the last one
    bool fit;                                      // 32 bits hold every sum of whole taps, rounding included

    CONVOLVE_INLINE int16_t* whole() { return padded + kZeros; }
    CONVOLVE_INLINE const int16_t* whole() const { return padded + kZeros; }
};

// Eight taps from the k-th on, zeros for those that do not exist. They are shifted down from where all eight exist.
CONVOLVE_INLINE __m128i eightTaps(const int16_t* coeffs, int k, int taps) {
    alignas(16) static constexpr uint8_t kShifts[32] = {
        0,    1,    2,    3,    4,    5,    6,    7,    8,    9,    10,   11,   12,   13,   14,   15,
        0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80};
    const int missing = k + 8 - taps;
    if (missing <= 0) return Lanes128::load(coeffs + k);
    if (taps >= 8) {
        const auto* const shift = reinterpret_cast<const __m128i*>(kShifts + 2 * missing);
        return _mm_shuffle_epi8(Lanes128::load(coeffs + taps - 8), _mm_loadu_si128(shift));
    }
    int16_t few[8] = {};
    for (int i = 0; i < taps; ++i) few[i] = coeffs[i];
    return Lanes128::load(few);
}

// With taps whose absolute values add up to 65535, a sum and its rounding are at most 65535 * 32768 + 16384 < 2^31.
CONVOLVE_INLINE void splitTaps(const int16_t* coeffs, int taps, PairTaps& split) {
    const __m128i to_upper = _mm_set1_epi16(128), one = _mm_set1_epi16(1);
    __m128i magnitude = _mm_setzero_si128();
    int k = 0;
    for (; k < taps; k += 8) {
        const __m128i eight = eightTaps(coeffs, k, taps);
        const __m128i sign = _mm_or_si128(_mm_srai_epi16(eight, 15), one);
        magnitude = _mm_add_epi32(magnitude, _mm_madd_epi16(eight, sign));
        Lanes128::store(split.whole() + k, eight);
        Lanes128::store(split.upper + k, _mm_mulhrs_epi16(eight, to_upper));
    }
    for (int zeros = 0; zeros < PairTaps::kZeros; zeros += 8) {
        Lanes128::store(split.padded + zeros, _mm_setzero_si128());
        Lanes128::store(split.whole() + k + zeros, _mm_setzero_si128());
    }
    magnitude = _mm_add_epi32(magnitude, _mm_srli_si128(magnitude, 8));
    magnitude = _mm_add_epi32(magnitude, _mm_srli_si128(magnitude, 4));
    split.fit = _mm_cvtsi128_si32(magnitude) <= 65535;
}

template <class Lanes>
struct PairSums {
    typename Lanes::Vector whole, upper;
};

template <class Lanes, bool kBoth>
CONVOLVE_INLINE PairSums<Lanes> pairOfTaps(const PairTaps& taps, ptrdiff_t pair) {
    const typename Lanes::Vector whole = Lanes::pair(taps.whole() + 2 * pair);
    if constexpr (kBoth) return {whole, Lanes::pair(taps.upper + 2 * pair)};
    return {whole, whole};
}

template <class Lanes, bool kBoth>
CONVOLVE_INLINE void addPair(PairSums<Lanes>& sums, typename Lanes::Vector samples,
                             const PairSums<Lanes>& taps) {
    CONVOLVE_IN_REGISTER(samples);
    Lanes::multiplyAddInPlace(sums.whole, samples, taps.whole);
    if constexpr (kBoth) Lanes::multiplyAddInPlace(sums.upper, samples, taps.upper);
}

template <class Lanes>
CONVOLVE_INLINE typename Lanes::Vector lowerSums(const PairSums<Lanes>& sums) {
    return Lanes::subtract(sums.whole, Lanes::shiftLeft(sums.upper, _mm_cvtsi32_si128(8)));
}

// Rounded Q15 values, narrowed with saturation.
struct NarrowedSums {
    int16_t* out;
    size_t count;

    template <class Lanes, bool kBoth>
    static CONVOLVE_INLINE typename Lanes::Vector rounded(const PairSums<Lanes>& sums) {
        const typename Lanes::Vector half = Lanes::all(1 << 14);
        if constexpr (!kBoth) return Lanes::shiftRight(Lanes::add(sums.whole, half), _mm_cvtsi32_si128(15));
        const auto carry = Lanes::shiftRight(Lanes::add(lowerSums<Lanes>(sums), half), _mm_cvtsi32_si128(8));
        return Lanes::shiftRight(Lanes::add(sums.upper, carry), _mm_cvtsi32_si128(7));
    }
    template <class Lanes, bool kBoth, class... Count>
    CONVOLVE_INLINE void put(size_t i, const PairSums<Lanes>& sums, Count... of) const {
        Lanes::storeHalf(out + i, rounded<Lanes, kBoth>(sums), of...);
    }
};

// Sums of parts of a filter, added up.
struct TotalledSums {
    PairTotals& totals;
    size_t count;

    template <class Lanes, bool kBoth, class... Count>
    CONVOLVE_INLINE void put(size_t i, const PairSums<Lanes>& sums, Count...) const {
        const auto low =
            Lanes::add(kBoth ? lowerSums<Lanes>(sums) : sums.whole, load<Lanes>(totals.rest + i));
        const auto carry = Lanes::shiftRight(low, _mm_cvtsi32_si128(8));
        const auto high = kBoth ? Lanes::add(sums.upper, carry) : carry;
        store<Lanes>(totals.rest + i, Lanes::bits(low, 0xff));
        add<Lanes>(totals.lower + i, Lanes::bits(high, 0xffff));
        add<Lanes>(totals.upper + i, Lanes::shiftRight(high, _mm_cvtsi32_si128(16)));
    }
    template <class Lanes>
    static CONVOLVE_INLINE typename Lanes::Vector load(const int32_t* p) {
        return Lanes::load(reinterpret_cast<const int16_t*>(p));
    }
    template <class Lanes>
    static CONVOLVE_INLINE void store(int32_t* p, typename Lanes::Vector v) {
        Lanes::store(p, v);
    }
    template <class Lanes>
    static CONVOLVE_INLINE void add(int32_t* p, typename Lanes::Vector v) {
        Lanes::store(p, Lanes::add(load<Lanes>(p), v));
    }
};

// The sums of adjoining vectors of outputs from `first` on; the last of them may have outputs that do not exist.
template <class Lanes, bool kBoth, size_t kGroups, class Output>
CONVOLVE_INLINE void putSums(const PairSums<Lanes> (&sums)[kGroups], size_t first, const Output& output) {
    constexpr size_t kEach = Lanes::kOutputs / 2;
    const auto put = [&](auto m, auto... of) CONVOLVE_LAMBDA {
        output.template put<Lanes, kBoth>(first + kEach * m.value, sums[m.value], of...);
    };
    unrolled<kGroups - 1>(put);
    const size_t left = output.count - first - kEach * (kGroups - 1);
    if (left >= kEach) {
        put(Index<kGroups - 1>());
    } else {
        put(Index<kGroups - 1>(), left);
    }
}

}  // namespace
