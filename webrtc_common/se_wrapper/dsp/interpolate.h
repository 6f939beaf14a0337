// Polyphase interpolation, as the engine calls it through its hook.
#pragma once

#include <cstdint>

#include "webrtc_common/export.h"

namespace quill::media::se_wrapper {

// Interpolates num_in samples 1 to `factor` and moves *signal on by num_in: with c the phase at
// coeffs + p * num_taps and x = *signal
//     out[j * factor + p] = (sum over t < num_taps of c[t] * x[j + t] + 16384) >> 15, saturated,
// in the arithmetic of the 16-bit correlation kernel (webrtc_common/convolve/convolve.h).
// in:     coeffs, `factor` phases of num_taps Q15 coefficients, phase after phase.
// out:    num_in * factor samples; overlaps nothing else.
// reads:  with P taps, num_taps rounded up to a multiple of 8, whole blocks of eight: up to
//         (*signal)[num_in + P + 6]. What lies past the last tap does not matter, but must be readable.
// writes: the num_in * factor outputs and *signal. With num_in 0 that is nothing, with num_taps 0 the outputs
//         are 0.
// fails:  nothing. Uses up to 2 (P + num_in + 7) bytes of stack, 256 KiB at most.
// The host's rounding mode and the flushing of denormals change nothing: all arithmetic is on integers.
// [any] rt-safe
SE_WRAPPER_EXPORT void interp1ToNCore(uint16_t num_in, uint16_t factor, int16_t** signal, int16_t* out,
                                      int16_t* coeffs, uint16_t num_taps);

}  // namespace quill::media::se_wrapper
