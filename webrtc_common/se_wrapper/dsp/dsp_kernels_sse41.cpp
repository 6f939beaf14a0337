// The routines around 16-bit samples for SSE4.1, the floor: vectors of 128 bits.
// No standard library templates and no functions shared with other files here.
#include "webrtc_common/se_wrapper/dsp/dsp_kernels_body.inl.h"

DSP_FUNCTIONS(sse41)
