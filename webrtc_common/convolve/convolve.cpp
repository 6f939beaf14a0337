// The selected kernels, the list of builds, and the AVX entry points, which lead to the widest build that the
// processor offers.
// Threads: the selection set-up only, the rest any. The pointers are initialised statically, so that a kernel
// can be called before any code of the library has run.
#include "webrtc_common/convolve/convolve.h"

#include "webrtc_common/convolve/convolve_avx_bodies.h"

namespace quill::media::se_wrapper {
namespace {

constexpr int kSsse3 = 0;
constexpr int kNarrowestAvx = 1;

// What the AVX entry points run.
const ConvolveVariant* g_avx_body = &kConvolveVariants[kNarrowestAvx];

}  // namespace

const ConvolveVariant kConvolveVariants[kNumConvolveVariants] = {
    {"ssse3", "ssse3", &CPUInfo::has_ssse3, convolve_i16_i16_SSSE3, convolve_i16_i32_SSSE3},
    {"avx", "avx", &CPUInfo::has_avx, convolve_i16_i16_avx, convolve_i16_i32_avx},
    {"avx2", "avx", &CPUInfo::has_avx2, convolve_i16_i16_avx2, convolve_i16_i32_avx2},
    {"avx-vnni", "avx", &CPUInfo::has_avx_vnni, convolve_i16_i16_avxvnni, convolve_i16_i32_avxvnni},
    {"avx512-vnni", "avx", &CPUInfo::has_avx512_vnni, convolve_i16_i16_avx512vnni,
     convolve_i16_i32_avx512vnni},
};

void selectConvolveKernels(const CPUInfo& cpu) {
    if (!cpu.has_avx) return;
    for (int row = kNarrowestAvx; row < kNumConvolveVariants; ++row) {
        if (cpu.*kConvolveVariants[row].feature) g_avx_body = &kConvolveVariants[row];
    }
    g_convolve_i16_i16 = convolve_i16_i16_AVX;
    g_convolve_i16_i32 = convolve_i16_i32_AVX;
}

const ConvolveVariant* selectedConvolveVariant() {
    const auto selected = [](ConvolveI16I16* i16_i16, ConvolveI16I32* i16_i32) {
        return g_convolve_i16_i16 == i16_i16 && g_convolve_i16_i32 == i16_i32;
    };
    if (selected(convolve_i16_i16_SSSE3, convolve_i16_i32_SSSE3)) return &kConvolveVariants[kSsse3];
    if (selected(convolve_i16_i16_AVX, convolve_i16_i32_AVX)) return g_avx_body;
    return nullptr;
}

}  // namespace quill::media::se_wrapper

using quill::media::se_wrapper::g_avx_body;

ConvolveI16I16* g_convolve_i16_i16 = convolve_i16_i16_SSSE3;
ConvolveI16I32* g_convolve_i16_i32 = convolve_i16_i32_SSSE3;

void convolve_i16_i16_AVX(const int16_t* coeffs, const int16_t* signal, int16_t* out, int num_out,
                          int num_taps) {
    g_avx_body->i16_i16(coeffs, signal, out, num_out, num_taps);
}

void convolve_i16_i32_AVX(const int16_t* coeffs, const int16_t* signal, int32_t* out, int shift_right,
                          int num_out, int num_taps, int shift_left) {
    g_avx_body->i16_i32(coeffs, signal, out, shift_right, num_out, num_taps, shift_left);
}
