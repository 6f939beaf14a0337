// Polyphase interpolation: one correlation a phase, spread over the output.
// It must not allocate.
#include "webrtc_common/se_wrapper/dsp/interpolate.h"

#include <algorithm>
#include <cstddef>

#include "webrtc_common/convolve/convolve.h"
#include "webrtc_common/se_wrapper/dsp/stack_scratch.h"

namespace quill::media::se_wrapper {
namespace {

// Every `stride`-th of `to`. Unrolled, because the plain loop takes 1.5 times as long.
void spread(const int16_t* from, std::size_t count, int16_t* to, std::size_t stride) {
    if (stride == 1) {
        std::copy_n(from, count, to);
        return;
    }
    _Pragma("GCC unroll 8") for (std::size_t j = 0; j < count; ++j) to[j * stride] = from[j];
}

void interpolate(std::size_t num_in, std::size_t factor, const int16_t* signal, int16_t* out,
                 const int16_t* coeffs, int num_taps) {
    const int padded_taps = roundedUpToEight(num_taps);
    const int count = static_cast<int>(num_in);
    int16_t* const phase = SE_WRAPPER_STACK_ARRAY(int16_t, padded_taps);
    int16_t* const result = SE_WRAPPER_STACK_ARRAY(int16_t, roundedUpToEight(count));
    std::fill(phase + num_taps, phase + padded_taps, int16_t{0});
    for (std::size_t p = 0; p < factor; ++p, coeffs += num_taps) {
        std::copy_n(coeffs, num_taps, phase);
        g_convolve_i16_i16(phase, signal, result, count, padded_taps);
        spread(result, num_in, out + p, factor);
    }
}

}  // namespace

// The kernel runs one block and one step even for a count of 0, so it is not called for those.
void interp1ToNCore(uint16_t num_in, uint16_t factor, int16_t** signal, int16_t* out, int16_t* coeffs,
                    uint16_t num_taps) {
    if (num_in == 0) return;
    if (num_taps == 0) {
        std::fill_n(out, std::size_t{num_in} * factor, int16_t{0});
    } else {
        interpolate(num_in, factor, *signal, out, coeffs, num_taps);
    }
    *signal += num_in;
}

}  // namespace quill::media::se_wrapper
