// The real FFT for SSE4.1, the floor: vectors of 128 bits.
// No standard library templates and no functions shared with other files here.
#include "webrtc_common/fftpack/real_fft_builds.h"

#define FFT_SET sse41
#include "webrtc_common/fftpack/real_fft_body.inl.h"
