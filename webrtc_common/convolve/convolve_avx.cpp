// The correlation kernels for AVX: 128 bits, three-operand instructions.
// No standard library templates and no functions shared with other files here.
#include "webrtc_common/convolve/convolve_bodies.h"
#include "webrtc_common/convolve/lanes_128.inl.h"

namespace {
using Widest = Lanes128;
}

#include "webrtc_common/convolve/convolve_body.inl.h"
#include "webrtc_common/convolve/pairs_body.inl.h"

CONVOLVE_FUNCTIONS(convolve_body_i16_i16_avx, convolve_body_i16_i32_avx)
PAIR_KERNELS(avx)
