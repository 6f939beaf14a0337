// The AVX build of the real FFT: compiled for AVX, exporting its transforms and nothing else.
// Threads: any. No standard library templates and no functions shared with other files here.
#define FFT_NAMESPACE avx
#include "webrtc_common/fftpack/real_fft_body.inl.h"
#include "webrtc_common/fftpack/real_fft_builds.h"

namespace quill::fftpack {

void forward_avx(int n, float* r, float* wsave, const int* ifac) {
    avx::forward(n, r, wsave, ifac);
}

void backward_avx(int n, float* r, float* wsave, const int* ifac) {
    avx::backward(n, r, wsave, ifac);
}

void forwardOfSamples_avx(int n, const int16_t* in, float* r, float* wsave, const int* ifac) {
    avx::forwardOfSamples(n, in, r, wsave, ifac);
}

void backwardToSamples_avx(int n, float* r, float gain, int16_t* out, float* wsave, const int* ifac) {
    avx::backwardToSamples(n, r, gain, out, wsave, ifac);
}

}  // namespace quill::fftpack
