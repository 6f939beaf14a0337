// The correlation that the engine's echo canceller calls through its hook.
// It must not do more than forward.
#pragma once

#include <cstdint>

#include "webrtc_common/export.h"

namespace quill::media::se_wrapper {

// Hands all seven arguments, unchanged, to the selected scaled correlation kernel; shapes, reads, writes and
// arithmetic are those of ConvolveI16I32 in webrtc_common/convolve/convolve.h.
// fails: nothing.
// The host's rounding mode and the flushing of denormals change nothing: all arithmetic is on integers.
// [any] rt-safe
SE_WRAPPER_EXPORT void aecConvolution(int16_t* coeffs, int16_t* signal, int32_t* out, int shift_right,
                                      int num_out, int num_taps, int shift_left);

}  // namespace quill::media::se_wrapper
