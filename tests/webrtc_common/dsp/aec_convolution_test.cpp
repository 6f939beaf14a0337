// The echo canceller's convolution calls the selected kernel.
#include "webrtc_common/se_wrapper/dsp/aec_convolution.h"

#include <gtest/gtest.h>

#include <tuple>

#include "webrtc_common/convolve/convolve.h"

namespace quill::media::se_wrapper {
namespace {

using Arguments = std::tuple<const int16_t*, const int16_t*, int32_t*, int, int, int, int>;
Arguments seen;

void recordArguments(const int16_t* coeffs, const int16_t* signal, int32_t* out, int shift_right, int num_out,
                     int num_taps, int shift_left) {
    seen = {coeffs, signal, out, shift_right, num_out, num_taps, shift_left};
}

TEST(AecConvolution, PassesAllSevenArgumentsUnchanged) {
    g_convolve_i16_i32 = recordArguments;
    int16_t coeffs[1];
    int16_t signal[1];
    int32_t out[1];
    aecConvolution(coeffs, signal, out, -3, 13, 5, 40);
    g_convolve_i16_i32 = convolve_i16_i32_SSSE3;
    EXPECT_EQ(seen, Arguments(coeffs, signal, out, -3, 13, 5, 40));
}

TEST(AecConvolution, GivesTheScaledSums) {
    int16_t coeffs[8] = {1, 2, 0, 0, 0, 0, 0, 0};
    int16_t signal[16] = {10, 20, 30, 40, 50, 60, 70, 80, 90};
    int32_t out[8] = {};
    aecConvolution(coeffs, signal, out, 1, 8, 8, 2);
    for (int i = 0; i < 8; ++i) EXPECT_EQ(out[i], (30 * i + 50 + 1) / 2 * 4) << i;
}

}  // namespace
}  // namespace quill::media::se_wrapper
