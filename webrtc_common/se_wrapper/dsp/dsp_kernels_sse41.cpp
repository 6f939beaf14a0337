// The SSE4.1 build of the routines around 16-bit samples: compiled for SSE4.1, exporting them and nothing else.
// Threads: any. No standard library templates and no functions shared with other files here.
#include "webrtc_common/se_wrapper/dsp/complex_multiply_body.inl.h"
#include "webrtc_common/se_wrapper/dsp/deinterleave_body.inl.h"
#include "webrtc_common/se_wrapper/dsp/dsp_kernels_builds.h"
#include "webrtc_common/se_wrapper/dsp/fft_conversion_body.inl.h"

namespace quill::media::se_wrapper {

void widen_sse41(const int16_t* in, float* out, int count) {
    widen(in, out, count);
}

void narrowScaled_sse41(const float* in, float scale, int16_t* out, int count) {
    narrowScaled(in, scale, out, count);
}

void multiplyComplex_sse41(const int16_t* a, const int16_t* b, int16_t* out, size_t n) {
    multiplyComplex(a, b, out, n);
}

void deinterleave_sse41(const int16_t* interleaved, size_t channels, int16_t* rows) {
    deinterleave(interleaved, channels, rows);
}

}  // namespace quill::media::se_wrapper
