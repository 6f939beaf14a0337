// The list of builds of the conversions and the selected one.
// Threads: the selection set-up only. It is initialised statically, so that a hook can be called before any
// code of the library has run.
#include "webrtc_common/se_wrapper/dsp/fft_conversion.h"

#include "webrtc_common/se_wrapper/dsp/fft_conversion_builds.h"

namespace quill::media::se_wrapper {

const FftConversions kFftConversions[kNumFftConversions] = {
    {"sse41", &CPUInfo::has_sse41, widen_sse41, narrowScaled_sse41, narrowQ10_sse41},
    {"avx2", &CPUInfo::has_avx2, widen_avx2, narrowScaled_avx2, narrowQ10_avx2},
};

const FftConversions* g_fft_conversions = &kFftConversions[0];

void selectFftConversions(const CPUInfo& cpu) {
    if (cpu.has_avx2) g_fft_conversions = &kFftConversions[1];
}

}  // namespace quill::media::se_wrapper
