// The SSE4.1 build of the conversions around the FFT: compiled for SSE4.1, exporting them and nothing else.
// Threads: any. No standard library templates and no functions shared with other files here.
#include "webrtc_common/se_wrapper/dsp/fft_conversion_body.inl.h"
#include "webrtc_common/se_wrapper/dsp/fft_conversion_builds.h"

namespace quill::media::se_wrapper {

void widen_sse41(const int16_t* in, float* out, int count) {
    widen(in, out, count);
}

void narrowScaled_sse41(const float* in, float scale, int16_t* out, int count) {
    narrow<Low16>(in, scale, out, count);
}

void narrowQ10_sse41(const float* in, float gain, int16_t* out, int count) {
    narrow<Q10>(in, gain, out, count);
}

}  // namespace quill::media::se_wrapper
