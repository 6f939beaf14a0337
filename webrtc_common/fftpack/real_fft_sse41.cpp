// The SSE4.1 build of the real FFT: compiled for SSE4.1, exporting its transforms and nothing else.
// Threads: any. No standard library templates and no functions shared with other files here.
#define FFT_NAMESPACE sse41
#include "webrtc_common/fftpack/real_fft_body.inl.h"
#include "webrtc_common/fftpack/real_fft_builds.h"

namespace quill::fftpack {

void forward_sse41(int n, float* r, float* wsave, const int* ifac) {
    sse41::forward(n, r, wsave, ifac);
}

void backward_sse41(int n, float* r, float* wsave, const int* ifac) {
    sse41::backward(n, r, wsave, ifac);
}

void forwardSamples_sse41(int n, const int16_t* in, float scale, int16_t* out, float* r, float* wsave,
                          const int* ifac) {
    sse41::forwardSamples(n, in, scale, out, r, wsave, ifac);
}

void backwardSamples_sse41(int n, const int16_t* in, float gain, int16_t* out, float* r, float* wsave,
                           const int* ifac) {
    sse41::backwardSamples(n, in, gain, out, r, wsave, ifac);
}

}  // namespace quill::fftpack
