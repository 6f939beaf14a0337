// The body of the real FFT, included by one source file an instruction set, which defines FFT_SET as the name of
// that set. Nothing here may be shared between source files: no name with external linkage but the four at the end,
// nothing from the standard library. Else the linker might keep the copy built for one processor and give it to
// another.
//
// Every lane of a vector computes what the scalar transform computes for its value, in the same order, so that
// all builds give the same bits.
#pragma once

#include <immintrin.h>
#include <stddef.h>
#include <stdint.h>

#include "webrtc_common/fftpack/general_passes.h"
#include "webrtc_common/fftpack/stage.h"

#define FFT_INLINE inline __attribute__((always_inline))
#define FFT_UNROLL _Pragma("GCC unroll 8")  // at every optimisation level: rows stay in registers

namespace quill::fftpack {
namespace {
namespace FFT_SET {  // its name shows in those of the functions

// Each builds on those before it.
// clang-format off
#include "webrtc_common/fftpack/samples.inl.h"
#include "webrtc_common/fftpack/lanes.inl.h"
#include "webrtc_common/fftpack/arrangements.inl.h"
#include "webrtc_common/fftpack/passes.inl.h"
// clang-format on

// From group k on, with as many lanes as are left for.
template <class Pass, class F, class In, class Out>
FFT_INLINE void endsFrom(const Stage& s, In in, Out out, size_t k) {
    for (; k + F::kLanes <= s.groups; k += F::kLanes) Pass::template ends<F>(s, in, out, k);
    if constexpr (F::kLanes > 1) {
        if (k < s.groups) endsFrom<Pass, typename F::Narrower>(s, in, out, k);
    }
}

template <class Pass, class F, class In, class Out>
FFT_INLINE void pairFrom(const Stage& s, In in, Out out, size_t k, size_t m) {
    using L = AcrossGroups<F>;
    if (k + F::kLanes <= s.groups) {
        const Twiddles<L, Pass::kRadix> w(s, m);
        for (; k + F::kLanes <= s.groups; k += F::kLanes) Pass::template pairs<L>(s, w, in, out, k, m);
    }
    if constexpr (F::kLanes > 1) {
        if (k < s.groups) pairFrom<Pass, typename F::Narrower>(s, in, out, k, m);
    }
}

template <class Pass, class F, class In, class Out>
FFT_INLINE void pairsAcrossGroups(const Stage& s, In in, Out out) {
    for (size_t m = 1; 2 * m < s.width; ++m) pairFrom<Pass, F>(s, in, out, 0, m);
}

// The last vector overlaps the one before it, if need be. False when there are too few pairs for a vector.
template <class Pass, class L, class In, class Out>
FFT_INLINE bool pairsAlong(const Stage& s, In in, Out out) {
    const size_t pairs = (s.width - 1) / 2;
    if (pairs < L::kPairs) return false;
    const size_t last = pairs - L::kPairs + 1;
    for (size_t m = 1;; m = m + L::kPairs < last ? m + L::kPairs : last) {
        Pass::template pairs<L>(s, Twiddles<L, Pass::kRadix>(s, m), in, out, 0, m);
        if (m == last) return true;
    }
}

template <class Pass, size_t kGroups, class F, class In, class Out>
FFT_INLINE bool pairsOfGroups(const Stage& s, In in, Out out) {
    if constexpr (F::kLanes <= kGroups) {
        return false;
    } else {
        return pairsAlong<Pass, AlongPairs<F, kGroups>>(s, in, out) ||
               pairsOfGroups<Pass, kGroups, typename F::Narrower>(s, in, out);
    }
}

// Samples stand only at rows of one value, spectra of 16 bits only at a single group: the caller's two ends.
template <class Place>
constexpr bool kAtRowsOfOneValue = false;
template <>
constexpr bool kAtRowsOfOneValue<const int16_t*> = true;
template <>
constexpr bool kAtRowsOfOneValue<SamplesOut> = true;
template <class Place>
constexpr bool kAtSingleGroup = false;
template <>
constexpr bool kAtSingleGroup<PackedSpectrum> = true;
template <>
constexpr bool kAtSingleGroup<SpectrumOut> = true;

// Radix 4 stands at the front of the factors or behind a single 2, so that its groups are 1, 2, 4 and more;
// a 2 is always the first. Other factors have few groups only where n has hardly any even factors.
template <class Pass, class In, class Out>
FFT_INLINE bool pairsOfFewGroups(const Stage& s, In in, Out out) {
    if constexpr (Pass::kRadix == 4) {
        if (s.groups == 1) return pairsOfGroups<Pass, 1, Widest>(s, in, out);
        if constexpr (!kAtSingleGroup<In> && !kAtSingleGroup<Out>) {
            if (s.groups == 2) return pairsOfGroups<Pass, 2, Widest>(s, in, out);
            if (s.groups == 4) return pairsOfGroups<Pass, 4, Widest>(s, in, out);
        }
    }
    if constexpr (Pass::kRadix == 2) return pairsOfGroups<Pass, 1, Widest>(s, in, out);
    return false;
}

// `in` may be `out` for rows of one value.
template <class Pass, class In, class Out>
FFT_INLINE void run(const Stage& s, In in, Out out) {
    if constexpr (kAtRowsOfOneValue<In> || kAtRowsOfOneValue<Out>) {
        endsFrom<Pass, Widest>(s, in, out, 0);
    } else if constexpr (kAtSingleGroup<In> || kAtSingleGroup<Out>) {
        endsFrom<Pass, One>(s, in, out, 0);
        if (s.width < 3) return;
        if (!pairsOfFewGroups<Pass>(s, in, out)) pairsAcrossGroups<Pass, One>(s, in, out);
    } else {
        endsFrom<Pass, Widest>(s, in, out, 0);
        if (s.width < 3) return;
        if (!pairsOfFewGroups<Pass>(s, in, out)) pairsAcrossGroups<Pass, Widest>(s, in, out);
    }
}

template <class In, class Out>
FFT_INLINE void forwardPass(const Stage& s, In in, Out out) {
    switch (s.radix) {
        case 2:
            return run<Forward2>(s, in, out);
        case 3:
            return run<ForwardOdd<3>>(s, in, out);
        case 4:
            return run<Forward4>(s, in, out);
        case 5:
            return run<ForwardOdd<5>>(s, in, out);
    }
}

template <class In, class Out>
FFT_INLINE void backwardPass(const Stage& s, In in, Out out) {
    switch (s.radix) {
        case 2:
            return run<Backward2>(s, in, out);
        case 3:
            return run<Backward3>(s, in, out);
        case 4:
            return run<Backward4>(s, in, out);
        case 5:
            return run<Backward5>(s, in, out);
    }
}

constexpr size_t kFirstFactor = 2;  // place in ifac, after n and the number of factors
constexpr size_t kLargestVectorRadix = 5;

bool mayRunInPlace(const Stage& s) {
    return s.width == 1 && s.radix <= kLargestVectorRadix;
}

void copy(const float* from, float* to, size_t n) {
    if (from == to) return;
    for (size_t i = 0; i < n; ++i) to[i] = from[i];
}

// From the last factor to the first. An odd number of passes begins with one in place, so that the result is
// where it belongs. The first pass takes `samples` and the last gives `spectrum` instead, unless they are null.
void forwardPasses(int n, const int16_t* samples, float* r, SpectrumOut spectrum, float* wsave,
                   const int* ifac) {
    const auto length = static_cast<size_t>(n);
    const auto count = static_cast<size_t>(ifac[1]);
    float* from = r;
    Stage s{0, length, 1, wsave + 2 * length - 1};
    for (size_t f = count; f-- > 0;) {
        s.radix = static_cast<size_t>(ifac[kFirstFactor + f]);
        s.groups /= s.radix;
        s.twiddles -= (s.radix - 1) * s.width;
        if (s.groups == 1 && spectrum.data != nullptr) return forwardPass(s, from, spectrum);
        float* const to = from != r || (count % 2 == 1 && mayRunInPlace(s)) ? r : wsave;
        if (s.width == 1 && samples != nullptr) {
            forwardPass(s, samples, to);
        } else if (s.radix <= kLargestVectorRadix) {
            forwardPass(s, from, to);
        } else {
            forwardGeneral(s, from, to);
        }
        from = to;
        s.width *= s.radix;
    }
    copy(from, r, length);
}

// From the first factor to the last, which may find its values where its results belong. The first pass takes
// `spectrum` and the last gives `samples` instead, unless they are null.
void backwardPasses(int n, PackedSpectrum spectrum, float* r, SamplesOut samples, float* wsave,
                    const int* ifac) {
    const auto length = static_cast<size_t>(n);
    const auto count = static_cast<size_t>(ifac[1]);
    float* from = r;
    Stage s{0, 1, length, wsave + length};
    for (size_t f = 0; f < count; ++f) {
        s.radix = static_cast<size_t>(ifac[kFirstFactor + f]);
        s.width /= s.radix;
        if (s.width == 1 && samples.data != nullptr) return backwardPass(s, from, samples);
        float* const to = from != r || mayRunInPlace(s) ? r : wsave;
        if (s.groups == 1 && spectrum.data != nullptr) {
            backwardPass(s, spectrum, to);
        } else if (s.radix <= kLargestVectorRadix) {
            backwardPass(s, from, to);
        } else {
            backwardGeneral(s, from, to);
        }
        from = to;
        s.twiddles += (s.radix - 1) * s.width;
        s.groups *= s.radix;
    }
    copy(from, r, length);
}

void forward(int n, float* r, float* wsave, const int* ifac) {
    if (n > 1) forwardPasses(n, nullptr, r, {nullptr, 0.0f}, wsave, ifac);
}

void backward(int n, float* r, float* wsave, const int* ifac) {
    if (n > 1) backwardPasses(n, {nullptr, 0}, r, {nullptr, 0.0f}, wsave, ifac);
}

// A single pass would stand at both ends, and a general one knows floats only. The factors of n rise but for a 4
// before a 3, so the last one is the largest where it counts.
bool passesKnowSamples(int n, const int* ifac) {
    if (n <= 1 || ifac[1] == 1) return false;
    const auto count = static_cast<size_t>(ifac[1]);
    return static_cast<size_t>(ifac[kFirstFactor + count - 1]) <= kLargestVectorRadix;
}

void forwardSamples(int n, const int16_t* in, float scale, int16_t* out, float* r, float* wsave,
                    const int* ifac) {
    const SpectrumOut spectrum = {out + 1, scale};
    if (passesKnowSamples(n, ifac)) return forwardPasses(n, in, r, spectrum, wsave, ifac);
    for (int i = 0; i < n; ++i) r[i] = One::load(in + i);
    forward(n, r, wsave, ifac);
    for (int i = 0; i < n; ++i) One::store(spectrum + i, r[i]);
}

void backwardSamples(int n, const int16_t* in, float gain, int16_t* out, float* r, float* wsave,
                     const int* ifac) {
    const PackedSpectrum spectrum = {in, n - 1};
    const SamplesOut samples = {out, gain / PackedSpectrum::kUnit};
    if (passesKnowSamples(n, ifac)) return backwardPasses(n, spectrum, r, samples, wsave, ifac);
    for (int i = 0; i < n; ++i) r[i] = One::load(spectrum + i);
    backward(n, r, wsave, ifac);
    for (int i = 0; i < n; ++i) One::store(samples + i, r[i]);
}

}  // namespace FFT_SET
}  // namespace

#define FFT_JOIN_NAMES(name, set) name##_##set
#define FFT_JOIN(name, set) FFT_JOIN_NAMES(name, set)

void FFT_JOIN(forward, FFT_SET)(int n, float* r, float* wsave, const int* ifac) {
    FFT_SET::forward(n, r, wsave, ifac);
    FFT_SET::Widest::clearUpperHalves();
}

void FFT_JOIN(backward, FFT_SET)(int n, float* r, float* wsave, const int* ifac) {
    FFT_SET::backward(n, r, wsave, ifac);
    FFT_SET::Widest::clearUpperHalves();
}

void FFT_JOIN(forwardSamples, FFT_SET)(int n, const int16_t* in, float scale, int16_t* out, float* r,
                                       float* wsave, const int* ifac) {
    FFT_SET::forwardSamples(n, in, scale, out, r, wsave, ifac);
    FFT_SET::Widest::clearUpperHalves();
}

void FFT_JOIN(backwardSamples, FFT_SET)(int n, const int16_t* in, float gain, int16_t* out, float* r,
                                        float* wsave, const int* ifac) {
    FFT_SET::backwardSamples(n, in, gain, out, r, wsave, ifac);
    FFT_SET::Widest::clearUpperHalves();
}

}  // namespace quill::fftpack
