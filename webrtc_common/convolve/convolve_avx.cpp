// The correlation kernels for AVX: 128 bits, three-operand instructions.
// Threads: any. No standard library templates and no functions shared with other files here.
#include "webrtc_common/convolve/convolve_avx_bodies.h"
#include "webrtc_common/convolve/lanes_128.inl.h"

namespace {
using Widest = Lanes128;
}

#include "webrtc_common/convolve/convolve_body.inl.h"

void convolve_i16_i16_avx(const int16_t* coeffs, const int16_t* signal, int16_t* out, int num_out,
                          int num_taps) {
    convolveI16I16(coeffs, signal, out, num_out, num_taps);
}

void convolve_i16_i32_avx(const int16_t* coeffs, const int16_t* signal, int32_t* out, int shift_right,
                          int num_out, int num_taps, int shift_left) {
    convolveI16I32(coeffs, signal, out, shift_right, num_out, num_taps, shift_left);
}
