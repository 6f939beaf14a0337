// The table of builds and the selected one, which is initialised statically, so that a routine can be called before
// any code of the library has run.
#include "webrtc_common/se_wrapper/dsp/dsp_kernels.h"

#include "webrtc_common/se_wrapper/dsp/dsp_kernels_builds.h"

namespace quill::media::se_wrapper {
namespace {

constexpr DspVariant kRows[] = {
#define DSP_VARIANT(name, set, feature) \
    {{name, &CPUInfo::feature}, multiplyComplex_##set, deinterleave_##set},
#include "webrtc_common/se_wrapper/dsp/dsp_variant_rows.h"
};

}  // namespace

const KernelVariants<DspVariant> kDspVariants(kRows);

const DspVariant* g_dsp_kernels = &kRows[0];

void selectDspKernels(const CPUInfo& cpu) {
    if (const DspVariant* widest = widestAboveFloor(kDspVariants, cpu)) g_dsp_kernels = widest;
}

}  // namespace quill::media::se_wrapper
