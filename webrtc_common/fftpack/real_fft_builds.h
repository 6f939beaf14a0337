// The transforms of each build, which the table of real_fft.cpp alone refers to: forward_<set>, backward_<set>,
// forwardSamples_<set> and backwardSamples_<set> for each set of real_fft_variant_rows.h.
#pragma once

#include "webrtc_common/fftpack/real_fft.h"

namespace quill::fftpack {

// needs: a processor with what the name says.
#define REAL_FFT_VARIANT(name, set, feature) \
    RealFft forward_##set, backward_##set;   \
    ForwardSamples forwardSamples_##set;     \
    BackwardSamples backwardSamples_##set;
#include "webrtc_common/fftpack/real_fft_variant_rows.h"

}  // namespace quill::fftpack
