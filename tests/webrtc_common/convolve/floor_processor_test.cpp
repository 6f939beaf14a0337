// Behaviour on a processor without AVX; on any other these tests are skipped. CTest runs the whole program on
// an emulated one too.
#include <gtest/gtest.h>

#include <csignal>

#include "webrtc_common/convolve/convolve.h"

namespace quill::media::se_wrapper {
namespace {

class FloorProcessor : public ::testing::Test {
  protected:
    void SetUp() override {
        if (CPUInfo().has_avx) GTEST_SKIP() << "this processor has avx";
    }
};

TEST_F(FloorProcessor, KeepsTheSsse3Builds) {
    selectConvolveKernels(CPUInfo());
    EXPECT_EQ(g_convolve_i16_i16, convolve_i16_i16_SSSE3);
    EXPECT_EQ(g_convolve_i16_i32, convolve_i16_i32_SSSE3);
}

TEST_F(FloorProcessor, StopsAtAnAvxBuild) {
    const int16_t samples[16] = {};
    int16_t out[8];
    EXPECT_EXIT(convolve_i16_i16_AVX(samples, samples, out, 8, 8), ::testing::KilledBySignal(SIGILL), "");
}

}  // namespace
}  // namespace quill::media::se_wrapper
