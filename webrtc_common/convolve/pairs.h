// Exact sums for outputs that stand any number of samples apart: two steps for filters that decimate, or that must not
// wrap. Samples come in pairs, so that one multiplication instruction adds two products; each lane holds an output.
// They have the builds of the correlation kernels and are selected with them.
// Threads: the kernels any; the selection set-up only.
#pragma once

#include <cstddef>
#include <cstdint>

#include "webrtc_common/export.h"

namespace quill::media::se_wrapper {

// to[2 i] = from[i * step], to[2 i + 1] = from[i * step + 1] for i < count.
// reads: nothing else. writes: nothing else. [any] rt-safe
using CopyPairs = void(const int16_t* from, std::size_t step, std::size_t count, int16_t* to);

// low_sums[i] = sum over j < pairs of low[2 j] * rows[j][2 i] + low[2 j + 1] * rows[j][2 i + 1] modulo 2^32 for
// i < outputs, and high_sums[i] the same with `high`.
// needs: outputs a multiple of 16. reads, writes: nothing else. [any] rt-safe
using SumPairs = void(const int16_t* const* rows, const int16_t* low, const int16_t* high, int pairs,
                      int outputs, int32_t* low_sums, int32_t* high_sums);

struct PairKernels {
    CopyPairs* copy;
    SumPairs* sum;
};

// The floor's before any code runs, those of the widest build after selectConvolveKernels.
SE_WRAPPER_EXPORT extern const PairKernels* g_pair_kernels;

}  // namespace quill::media::se_wrapper
