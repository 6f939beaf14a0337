// A fixture that runs its tests once for each build of the 16-bit routines.
#pragma once

#include "tests/webrtc_common/each_variant.h"
#include "webrtc_common/se_wrapper/dsp/dsp_kernels.h"

namespace quill::test {

class EachDspBuild : public EachVariant<media::se_wrapper::DspVariant> {
  protected:
    void SetUp() override {
        EachVariant::SetUp();
        if (!IsSkipped()) media::se_wrapper::g_dsp_kernels = &GetParam();
    }
    void TearDown() override { media::se_wrapper::g_dsp_kernels = media::se_wrapper::kDspVariants.begin(); }
};

}  // namespace quill::test

// Once in each test file, for its own class derived from EachDspBuild.
#define INSTANTIATE_FOR_EACH_DSP_BUILD(fixture) \
    INSTANTIATE_FOR_EACH_VARIANT(fixture, ::quill::media::se_wrapper::kDspVariants)
