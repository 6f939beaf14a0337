// The correlation kernels for AVX-512 with VNNI: 512 bits, multiplication and addition in one instruction.
// No standard library templates and no functions shared with other files here.
#include "webrtc_common/convolve/convolve_bodies.h"
#include "webrtc_common/convolve/lanes_512.inl.h"

namespace {
using Widest = Lanes512;
}

#include "webrtc_common/convolve/convolve_body.inl.h"
#include "webrtc_common/convolve/pairs_body.inl.h"

CONVOLVE_FUNCTIONS(convolve_body_i16_i16_avx512vnni, convolve_body_i16_i32_avx512vnni)
PAIR_KERNELS(avx512vnni)
