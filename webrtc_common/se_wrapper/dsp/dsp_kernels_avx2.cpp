// The routines around 16-bit samples for AVX2: vectors of 256 bits.
// No standard library templates and no functions shared with other files here.
#include "webrtc_common/se_wrapper/dsp/dsp_kernels_body.inl.h"

DSP_FUNCTIONS(avx2)
