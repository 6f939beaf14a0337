// Product of complex vectors in Q15, as the engine calls it through its hook.
#pragma once

#include <cstdint>

#include "webrtc_common/export.h"

namespace quill::media::se_wrapper {

// out[k] = a[k] b[k] for n complex values, each part (sum of two products + 16384) >> 15, saturated; sums are
// taken modulo 2^32.
// in, out: n complex Q15 values, real and imaginary part interleaved; any alignment of int16.
//          `out` may be `a` or `b`.
// reads:   a[0 .. 2 n - 1], b[0 .. 2 n - 1].  writes: out[0 .. 2 n - 1].
// fails:   nothing.
// The host's rounding mode and the flushing of denormals change nothing: all arithmetic is on integers.
// Kept on purpose: in whole groups of four values the real part is ar br + (-ai) bi with -ai in 16 bits, so
// that an ai of -32768 stays -32768; the up to three values behind them subtract the product. The engine's
// fixed-point results depend on it.
// [any] rt-safe
SE_WRAPPER_EXPORT void vcmul_i16(int16_t* a, int16_t* b, int16_t* out, uint16_t n);

}  // namespace quill::media::se_wrapper
