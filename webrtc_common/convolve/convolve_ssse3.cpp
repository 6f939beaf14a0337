// The correlation kernels for SSSE3, the floor: 128 bits.
// No standard library templates and no functions shared with other files here.
#include "webrtc_common/convolve/convolve_bodies.h"
#include "webrtc_common/convolve/lanes_128.inl.h"

namespace {
using Widest = Lanes128;
}

#include "webrtc_common/convolve/convolve_body.inl.h"
#include "webrtc_common/convolve/pairs_body.inl.h"

CONVOLVE_FUNCTIONS(convolve_i16_i16_SSSE3, convolve_i16_i32_SSSE3)
PAIR_KERNELS(ssse3)
