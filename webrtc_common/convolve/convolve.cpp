// The selected kernels, the table of builds, and the AVX entry points, which run the widest build that the
// processor supports. The pointers are initialised statically, so that a kernel can be called before any code of
// the library has run.
#include "webrtc_common/convolve/convolve.h"

#include "webrtc_common/convolve/convolve_bodies.h"

namespace quill::media::se_wrapper {
namespace {

constexpr ConvolveVariant kRows[] = {
    {{"ssse3", &CPUInfo::has_ssse3},
     "ssse3",
     convolve_i16_i16_SSSE3,
     convolve_i16_i32_SSSE3,
     {filter_pairs_ssse3, total_pairs_ssse3}},
#define CONVOLVE_AVX_VARIANT(name, set, feature) \
    {{name, &CPUInfo::feature},                  \
     "avx",                                      \
     convolve_body_i16_i16_##set,                \
     convolve_body_i16_i32_##set,                \
     {filter_pairs_##set, total_pairs_##set}},
#include "webrtc_common/convolve/convolve_variant_rows.h"
};
constexpr const ConvolveVariant* kSsse3 = &kRows[0];
constexpr const ConvolveVariant* kNarrowestAvx = &kRows[1];

const ConvolveVariant* g_avx_body = kNarrowestAvx;

}  // namespace

const KernelVariants<ConvolveVariant> kConvolveVariants(kRows);

const PairKernels* g_pair_kernels = &kSsse3->pairs;

void selectConvolveKernels(const CPUInfo& cpu) {
    if (!cpu.has_avx) return;
    g_avx_body = widestAboveFloor(kConvolveVariants, cpu);
    g_convolve_i16_i16 = convolve_i16_i16_AVX;
    g_convolve_i16_i32 = convolve_i16_i32_AVX;
    g_pair_kernels = &g_avx_body->pairs;
}

const ConvolveVariant* selectedConvolveVariant() {
    const auto selected = [](ConvolveI16I16* i16_i16, ConvolveI16I32* i16_i32) {
        return g_convolve_i16_i16 == i16_i16 && g_convolve_i16_i32 == i16_i32;
    };
    if (selected(convolve_i16_i16_SSSE3, convolve_i16_i32_SSSE3)) return kSsse3;
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
