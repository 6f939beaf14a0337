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

void forwardSamples_avx(int n, const int16_t* in, float scale, int16_t* out, float* r, float* wsave,
                        const int* ifac) {
    avx::forwardSamples(n, in, scale, out, r, wsave, ifac);
}

void backwardSamples_avx(int n, const int16_t* in, float gain, int16_t* out, float* r, float* wsave,
                         const int* ifac) {
    avx::backwardSamples(n, in, gain, out, r, wsave, ifac);
}

}  // namespace quill::fftpack
