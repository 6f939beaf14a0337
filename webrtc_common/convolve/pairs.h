// Exact sums of FIR filters whose outputs stand any number of samples apart: for filters that decimate, or that must not
// wrap. Samples come in pairs, so that one multiplication instruction adds two products; each lane holds an output.
// They have the builds of the correlation kernels and are selected with them.
// Threads: the kernels any; the selection set-up only.
#pragma once

#include <cstddef>
#include <cstdint>

#include "webrtc_common/export.h"

namespace quill::media::se_wrapper {

// With s(i) = sum over k < taps of coeffs[k] * signal[i * step + k], for i < count, both kernels
// needs: step > 0, taps 1 .. kMostPairTaps, count 1 .. kMostPairOutputs. They are not checked.
// reads: coeffs[0 .. taps - 1], signal[0 .. (count - 1) * step + taps - 1], no more.
// fails: nothing. They use up to 170 KiB of stack, 24 KiB with a step below 16.
// [any] rt-safe
inline constexpr int kMostPairTaps = 504;
inline constexpr int kMostPairOutputs = 160;

// out[i] = (s(i) + 16384) >> 15, saturated.
// writes: out[0 .. count - 1], in ascending order and never before what it needs of `signal` from there on is read, so
//         `out` may be `signal` itself.
using FilterPairs = void(const int16_t* signal, std::size_t step, const int16_t* coeffs, int taps, int count,
                         int16_t* out);

// Sums of several parts of a filter: 2^24 upper + 2^8 lower + rest. Of `rest` only what is below 2^8 stays after an addition.
struct PairTotals {
    alignas(64) int32_t upper[kMostPairOutputs];
    alignas(64) int32_t lower[kMostPairOutputs];
    alignas(64) int32_t rest[kMostPairOutputs];
};

// Adds s(i) to the i-th total. needs: rest 0 to 2^14 before; at most 2^15 additions.
// writes: nothing beyond `count` rounded up to a multiple of 16.
using TotalPairs = void(const int16_t* signal, std::size_t step, const int16_t* coeffs, int taps, int count,
                        PairTotals* totals);

struct PairKernels {
    FilterPairs* filter;
    TotalPairs* total;
};

// The floor's before any code runs, those of the widest build after selectConvolveKernels.
SE_WRAPPER_EXPORT extern const PairKernels* g_pair_kernels;

}  // namespace quill::media::se_wrapper
