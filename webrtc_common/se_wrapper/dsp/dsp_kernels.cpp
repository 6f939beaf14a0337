// The list of builds and the selected one.
// Threads: the selection set-up only. It is initialised statically, so that a routine can be called before any
// code of the library has run.
#include "webrtc_common/se_wrapper/dsp/dsp_kernels.h"

#include "webrtc_common/se_wrapper/dsp/dsp_kernels_builds.h"

namespace quill::media::se_wrapper {

const DspKernels kDspKernels[kNumDspKernels] = {
    {"sse41", &CPUInfo::has_sse41, multiplyComplex_sse41, deinterleave_sse41},
    {"avx2", &CPUInfo::has_avx2, multiplyComplex_avx2, deinterleave_avx2},
};

const DspKernels* g_dsp_kernels = &kDspKernels[0];

void selectDspKernels(const CPUInfo& cpu) {
    if (cpu.has_avx2) g_dsp_kernels = &kDspKernels[1];
}

}  // namespace quill::media::se_wrapper
