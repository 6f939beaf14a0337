// The correlation kernels for AVX2: 256 bits.
// No standard library templates and no functions shared with other files here.
#include "webrtc_common/convolve/convolve_bodies.h"
#include "webrtc_common/convolve/lanes_256.inl.h"

namespace {
using Widest = Lanes256;
}

#include "webrtc_common/convolve/convolve_body.inl.h"
#include "webrtc_common/convolve/pairs_body.inl.h"

CONVOLVE_FUNCTIONS(convolve_body_i16_i16_avx2, convolve_body_i16_i32_avx2)
PAIR_KERNELS(avx2)
