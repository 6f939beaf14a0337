// The correlation kernels for AVX-VNNI: 256 bits, multiplication and addition in one instruction.
// No standard library templates and no functions shared with other files here.
#include "webrtc_common/convolve/convolve_bodies.h"
#include "webrtc_common/convolve/lanes_256.inl.h"

namespace {
using Widest = Lanes256;
}

#include "webrtc_common/convolve/convolve_body.inl.h"
#include "webrtc_common/convolve/pairs_body.inl.h"

CONVOLVE_FUNCTIONS(convolve_body_i16_i16_avxvnni, convolve_body_i16_i32_avxvnni)
PAIR_KERNELS(avxvnni)
