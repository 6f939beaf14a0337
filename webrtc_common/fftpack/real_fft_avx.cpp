// The real FFT for AVX: vectors of 256 bits.
// No standard library templates and no functions shared with other files here.
#include "webrtc_common/fftpack/real_fft_builds.h"

#define FFT_SET avx
#include "webrtc_common/fftpack/real_fft_body.inl.h"
