// The AVX2 build of the real FFT: compiled for AVX2, exporting its transforms and nothing else.
// Threads: any. No standard library templates and no functions shared with other files here.
#define FFT_NAMESPACE avx2
#include "webrtc_common/fftpack/real_fft_body.inl.h"
#include "webrtc_common/fftpack/real_fft_builds.h"

namespace quill::fftpack {

void forward_avx2(int n, float* r, float* wsave, const int* ifac) {
    avx2::forward(n, r, wsave, ifac);
}

void backward_avx2(int n, float* r, float* wsave, const int* ifac) {
    avx2::backward(n, r, wsave, ifac);
}

void forwardSamples_avx2(int n, const int16_t* in, float scale, int16_t* out, float* r, float* wsave,
                         const int* ifac) {
    avx2::forwardSamples(n, in, scale, out, r, wsave, ifac);
}

void backwardSamples_avx2(int n, const int16_t* in, float gain, int16_t* out, float* r, float* wsave,
                          const int* ifac) {
    avx2::backwardSamples(n, in, gain, out, r, wsave, ifac);
}

}  // namespace quill::fftpack
