// The routines around 16-bit samples that exist in several builds, and the selected one. They differ in encoding
// and in the width of their vectors, never in a bit of their results.
// Threads: the routines any, the selection set-up only.
#pragma once

#include <cstddef>
#include <cstdint>

#include "common/cpu_info.h"
#include "webrtc_common/export.h"

namespace quill::media::se_wrapper {

// One build and the processor feature that it needs. All: [any] rt-safe
struct DspKernels {
    const char* name;
    bool CPUInfo::*feature;

    // vcmul_i16, see complex_multiply.h.
    void (*multiplyComplex)(const int16_t* a, const int16_t* b, int16_t* out, std::size_t n);

    // deinterleaveMicrophones, see deinterleave.h.
    void (*deinterleave)(const int16_t* interleaved, std::size_t channels, int16_t* rows);
};

inline constexpr int kNumDspKernels = 2;

// Every build, the floor first, for whoever lists, checks or measures them.
SE_WRAPPER_EXPORT extern const DspKernels kDspKernels[kNumDspKernels];

// The build in use: that for SSE4.1 before any code runs, another after selectDspKernels.
SE_WRAPPER_EXPORT extern const DspKernels* g_dsp_kernels;

// Selects the build for AVX2 exactly when `cpu` has AVX2; otherwise leaves the selection alone, so that one once
// made is never taken back.
// needs: none of the routines is running. [setup]
SE_WRAPPER_EXPORT void selectDspKernels(const CPUInfo& cpu);

}  // namespace quill::media::se_wrapper
