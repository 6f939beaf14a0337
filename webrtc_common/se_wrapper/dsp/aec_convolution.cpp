// The correlation that the engine's echo canceller calls through its hook.
#include "webrtc_common/se_wrapper/dsp/aec_convolution.h"

#include "webrtc_common/convolve/convolve.h"

namespace quill::media::se_wrapper {

void aecConvolution(int16_t* coeffs, int16_t* signal, int32_t* out, int shift_right, int num_out,
                    int num_taps, int shift_left) {
    g_convolve_i16_i32(coeffs, signal, out, shift_right, num_out, num_taps, shift_left);
}

}  // namespace quill::media::se_wrapper
