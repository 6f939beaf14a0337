// The selected kernels and the list of builds.
// Threads: the selection set-up only. The pointers are initialised statically, so that a kernel can be called
// before any code of the library has run.
#include "webrtc_common/convolve/convolve.h"

ConvolveI16I16* g_convolve_i16_i16 = convolve_i16_i16_SSSE3;
ConvolveI16I32* g_convolve_i16_i32 = convolve_i16_i32_SSSE3;

namespace quill::media::se_wrapper {

const ConvolveVariant kConvolveVariants[kNumConvolveVariants] = {
    {"ssse3", &CPUInfo::has_ssse3, convolve_i16_i16_SSSE3, convolve_i16_i32_SSSE3},
    {"avx", &CPUInfo::has_avx, convolve_i16_i16_AVX, convolve_i16_i32_AVX},
};

void selectConvolveKernels(const CPUInfo& cpu) {
    if (!cpu.has_avx) return;
    g_convolve_i16_i16 = convolve_i16_i16_AVX;
    g_convolve_i16_i32 = convolve_i16_i32_AVX;
}

const ConvolveVariant* selectedConvolveVariant() {
    for (const ConvolveVariant& variant : kConvolveVariants) {
        if (g_convolve_i16_i16 == variant.i16_i16 && g_convolve_i16_i32 == variant.i16_i32) return &variant;
    }
    return nullptr;
}

}  // namespace quill::media::se_wrapper
