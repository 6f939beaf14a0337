// The routines around 16-bit samples that exist in several builds, and the selected one. The builds differ in encoding
// and in the width of their vectors, never in a bit of their results.
// Threads: the routines any, the selection set-up only.
#pragma once

#include <cstddef>
#include <cstdint>

#include "common/cpu_info.h"
#include "webrtc_common/export.h"
#include "webrtc_common/kernel_variants.h"

namespace quill::media::se_wrapper {

// vcmul_i16, see complex_multiply.h. [any] rt-safe
using MultiplyComplex = void(const int16_t* a, const int16_t* b, int16_t* out, std::size_t n);

// deinterleaveMicrophones, see deinterleave.h. [any] rt-safe
using Deinterleave = void(const int16_t* interleaved, std::size_t channels, int16_t* rows);

struct DspVariant : KernelVariant {
    MultiplyComplex* multiplyComplex;
    Deinterleave* deinterleave;
};

SE_WRAPPER_EXPORT extern const KernelVariants<DspVariant> kDspVariants;

// The build in use: the floor, that for SSE4.1, before any code runs, another after selectDspKernels.
SE_WRAPPER_EXPORT extern const DspVariant* g_dsp_kernels;

// Selects the widest build that `cpu` runs; on the floor alone leaves the selection as it is.
// needs: none of the routines is running. [setup]
SE_WRAPPER_EXPORT void selectDspKernels(const CPUInfo& cpu);

}  // namespace quill::media::se_wrapper
