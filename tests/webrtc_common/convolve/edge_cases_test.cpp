// Granularity, wrap-around, rounding and saturation of the kernels.
#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "tests/webrtc_common/convolve/each_build.h"

namespace quill::test {
namespace {

class ConvolveEdgeCases : public EachBuild {
  protected:
    // Elements of a poisoned output that a call changes; the signal is such that no output is the poison.
    int outputsWritten(int num_out) const {
        const std::vector<int16_t> coeffs(8, 16384);
        const std::vector<int16_t> signal(64, 100);
        std::vector<int16_t> out(64, -1);
        i16_i16()(coeffs.data(), signal.data(), out.data(), num_out, 8);
        return static_cast<int>(std::count_if(out.begin(), out.end(), [](int16_t v) { return v != -1; }));
    }
};
INSTANTIATE_FOR_EACH_BUILD(ConvolveEdgeCases);

TEST_P(ConvolveEdgeCases, ThirteenOutputsWriteSixteen) {
    EXPECT_EQ(outputsWritten(13), 16);
}

TEST_P(ConvolveEdgeCases, NoOutputsWriteEight) {
    EXPECT_EQ(outputsWritten(0), 8);
}

TEST_P(ConvolveEdgeCases, ANegativeCountIsNoOutputs) {
    EXPECT_EQ(outputsWritten(-20), 8);
}

TEST_P(ConvolveEdgeCases, FiveTapsConsumeEightCoefficients) {
    const int16_t coeffs[8] = {1, 1, 1, 1, 1, 10, 100, 1000};
    const std::vector<int16_t> signal(16, 1);
    int32_t out[8] = {};
    i16_i32()(coeffs, signal.data(), out, 0, 8, 5, 0);
    for (const int32_t v : out) EXPECT_EQ(v, 1115);
}

TEST_P(ConvolveEdgeCases, FiveTapsPaddedWithZerosGiveAFiveTapResult) {
    const int16_t coeffs[8] = {1, 2, 3, 4, 5, 0, 0, 0};
    const std::vector<int16_t> signal(16, 1);
    int32_t out[8] = {};
    i16_i32()(coeffs, signal.data(), out, 0, 8, 5, 0);
    for (const int32_t v : out) EXPECT_EQ(v, 15);
}

TEST_P(ConvolveEdgeCases, NoTapsConsumeEightCoefficients) {
    const int16_t coeffs[8] = {1, 1, 1, 1, 1, 1, 1, 1};
    const std::vector<int16_t> signal(16, 3);
    int32_t out[8] = {};
    i16_i32()(coeffs, signal.data(), out, 0, 8, 0, 0);
    for (const int32_t v : out) EXPECT_EQ(v, 24);
}

TEST_P(ConvolveEdgeCases, EightProductsOfTheMinimumWrapToZeroInsteadOfSaturating) {
    const std::vector<int16_t> minimum(16, INT16_MIN);
    std::vector<int16_t> out(8, 1);
    i16_i16()(minimum.data(), minimum.data(), out.data(), 8, 8);
    EXPECT_EQ(out, std::vector<int16_t>(8, 0));
}

TEST_P(ConvolveEdgeCases, ShiftsOfZeroReturnTheRawSums) {
    const int16_t coeffs[8] = {INT16_MAX, 1, 0, 0, 0, 0, 0, 0};
    int16_t signal[16];
    for (int16_t i = 0; i < 16; ++i) signal[i] = static_cast<int16_t>(i - 8);
    int32_t out[8] = {};
    i16_i32()(coeffs, signal, out, 0, 8, 8, 0);
    for (int i = 0; i < 8; ++i) EXPECT_EQ(out[i], 32767 * (i - 8) + (i - 7));
}

TEST_P(ConvolveEdgeCases, AShiftOfFifteenMatchesTheNarrowedSumsBeforeSaturation) {
    const int16_t coeffs[8] = {INT16_MAX, INT16_MAX, 0, 0, 0, 0, 0, 0};
    int16_t signal[16];
    for (int i = 0; i < 16; ++i) signal[i] = static_cast<int16_t>(4000 * i - 30000);
    int16_t narrowed[8] = {};
    int32_t shifted[8] = {};
    i16_i16()(coeffs, signal, narrowed, 8, 8);
    i16_i32()(coeffs, signal, shifted, 15, 8, 8, 0);
    EXPECT_LT(shifted[0], -32768);
    for (int i = 0; i < 8; ++i) EXPECT_EQ(std::clamp(shifted[i], -32768, 32767), narrowed[i]);
}

TEST_P(ConvolveEdgeCases, NarrowingRoundsHalfUpwards) {
    const int16_t coeffs[8] = {16384, 0, 0, 0, 0, 0, 0, 0};
    const int16_t signal[16] = {1, -1, 3, -3, 2, -2, 0, 5};
    int16_t out[8] = {};
    i16_i16()(coeffs, signal, out, 8, 8);
    const int16_t expected[8] = {1, 0, 2, -1, 1, -1, 0, 3};
    for (int i = 0; i < 8; ++i) EXPECT_EQ(out[i], expected[i]) << i;
}

TEST_P(ConvolveEdgeCases, NarrowingSaturatesBothWays) {
    const int16_t coeffs[8] = {INT16_MAX, INT16_MAX, 0, 0, 0, 0, 0, 0};
    const int16_t signal[16] = {INT16_MAX, INT16_MAX, INT16_MAX, INT16_MIN, INT16_MIN};
    int16_t out[8] = {};
    i16_i16()(coeffs, signal, out, 8, 8);
    EXPECT_EQ(out[0], 32767);
    EXPECT_EQ(out[3], -32768);
}

TEST_P(ConvolveEdgeCases, TheRoundingTermWrapsToo) {
    const int16_t coeffs[8] = {INT16_MAX, INT16_MAX, 0, 0, 0, 0, 0, 0};
    const std::vector<int16_t> signal(16, INT16_MAX);
    int32_t out[8] = {};
    i16_i32()(coeffs, signal.data(), out, 31, 8, 8, 0);
    EXPECT_EQ(out[0], -1);
}

TEST_P(ConvolveEdgeCases, ARightShiftBeyondTheRegisterLeavesSignBits) {
    const int16_t coeffs[8] = {1, 0, 0, 0, 0, 0, 0, 0};
    const int16_t signal[16] = {5, -5, 0, INT16_MIN, INT16_MAX};
    int32_t out[8] = {};
    for (const int shift : {33, 64, 1000, -1}) {
        i16_i32()(coeffs, signal, out, shift, 8, 8, 0);
        for (int i = 0; i < 8; ++i) EXPECT_EQ(out[i], signal[i] < 0 ? -1 : 0) << shift;
    }
}

TEST_P(ConvolveEdgeCases, ALeftShiftBeyondTheRegisterLeavesZeros) {
    const int16_t coeffs[8] = {1, 0, 0, 0, 0, 0, 0, 0};
    const std::vector<int16_t> signal(16, -7);
    int32_t out[8] = {};
    for (const int shift : {32, 1000, -1}) {
        i16_i32()(coeffs, signal.data(), out, 0, 8, 8, shift);
        for (const int32_t v : out) EXPECT_EQ(v, 0) << shift;
    }
}

}  // namespace
}  // namespace quill::test
