// Product of complex vectors in Q15, by the selected build.
#include "webrtc_common/se_wrapper/dsp/complex_multiply.h"

#include "webrtc_common/se_wrapper/dsp/dsp_kernels.h"

namespace quill::media::se_wrapper {

void vcmul_i16(int16_t* a, int16_t* b, int16_t* out, uint16_t n) {
    g_dsp_kernels->multiplyComplex(a, b, out, n);
}

}  // namespace quill::media::se_wrapper
