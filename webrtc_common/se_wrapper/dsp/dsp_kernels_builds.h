// The routines of each build, which the table of dsp_kernels.cpp alone refers to: multiplyComplex_<set> and
// deinterleave_<set> for each set of dsp_variant_rows.h.
#pragma once

#include "webrtc_common/se_wrapper/dsp/dsp_kernels.h"

namespace quill::media::se_wrapper {

// needs: a processor with what the name says.
#define DSP_VARIANT(name, set, feature)    \
    MultiplyComplex multiplyComplex_##set; \
    Deinterleave deinterleave_##set;
#include "webrtc_common/se_wrapper/dsp/dsp_variant_rows.h"

}  // namespace quill::media::se_wrapper
