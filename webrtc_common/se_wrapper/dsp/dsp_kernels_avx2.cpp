// The AVX2 build of the routines around 16-bit samples: compiled for AVX2, exporting them and nothing else.
// Threads: any. No standard library templates and no functions shared with other files here.
#include "webrtc_common/se_wrapper/dsp/complex_multiply_body.inl.h"
#include "webrtc_common/se_wrapper/dsp/deinterleave_body.inl.h"
#include "webrtc_common/se_wrapper/dsp/dsp_kernels_builds.h"

namespace quill::media::se_wrapper {

void multiplyComplex_avx2(const int16_t* a, const int16_t* b, int16_t* out, size_t n) {
    multiplyComplex(a, b, out, n);
}

void deinterleave_avx2(const int16_t* interleaved, size_t channels, int16_t* rows) {
    deinterleave(interleaved, channels, rows);
}

}  // namespace quill::media::se_wrapper
