// Real FIR filter with optional decimation, as the engine calls it through its hook.
#pragma once

#include <cstdint>

#include "webrtc_common/export.h"

namespace quill::media::se_wrapper {

// For i < num_out
//     out[i] = (sum over k = 0 .. order of coeffs[k] * signal[i * step + k] + 16384) >> 15, saturated.
// The coefficients are not reversed: signal[i * step] is the oldest sample of the span.
// in:     order + 1 Q15 coefficients (taps), any number up to 65536; any alignment of int16.
// out:    num_out samples, none for num_out 0. May be `signal` itself, unless step is 0.
// reads:  num_out a multiple of 8 and step 1: with P the taps rounded up to a multiple of 8, up to
//         signal[num_out + P - 1]; what lies past the last tap does not matter.
//         Otherwise no more than signal[0 .. step * (num_out - 1) + order], and of each span nothing
//         before the first or past the last coefficient that is not zero.
// writes: out[0 .. num_out - 1].
// fails:  nothing. Uses up to 128 KiB of stack; unless num_out is a multiple of 8 and step 1, 24 KiB with a step below 16.
// The host's rounding mode and the flushing of denormals change nothing: all arithmetic is on integers.
// Kept on purpose: with num_out a multiple of 8 and step 1 sums are taken modulo 2^32, otherwise in 64 bits,
// because the first go through the correlation kernel. They agree whenever the true sum fits in 32 bits.
// [any] rt-safe
SE_WRAPPER_EXPORT void computeRFir(int16_t* signal, int16_t* coeffs, int16_t* out, uint16_t order,
                                   uint16_t num_out, uint16_t step);

}  // namespace quill::media::se_wrapper
