// Which build the pointers hold. Each test starts with the pointers as the library was loaded.
#include <gtest/gtest.h>

#include <string>

#include "webrtc_common/convolve/convolve.h"

namespace quill::media::se_wrapper {
namespace {

CPUInfo processor(bool avx) {
    CPUInfo cpu;
    cpu.has_ssse3 = true;
    cpu.has_avx = avx;
    return cpu;
}

class ConvolveSelection : public ::testing::Test {
  protected:
    void TearDown() override {
        g_convolve_i16_i16 = convolve_i16_i16_SSSE3;
        g_convolve_i16_i32 = convolve_i16_i32_SSSE3;
    }
};

// Taken while this program's own static objects are made, before main.
ConvolveI16I16* const initial_i16_i16 = g_convolve_i16_i16;
ConvolveI16I32* const initial_i16_i32 = g_convolve_i16_i32;

TEST_F(ConvolveSelection, StartsWithTheSsse3Builds) {
    EXPECT_EQ(initial_i16_i16, convolve_i16_i16_SSSE3);
    EXPECT_EQ(initial_i16_i32, convolve_i16_i32_SSSE3);
}

TEST_F(ConvolveSelection, TakesTheAvxBuildsWhenTheProcessorHasAvx) {
    selectConvolveKernels(processor(true));
    EXPECT_EQ(g_convolve_i16_i16, convolve_i16_i16_AVX);
    EXPECT_EQ(g_convolve_i16_i32, convolve_i16_i32_AVX);
}

TEST_F(ConvolveSelection, KeepsTheSsse3BuildsWhenTheProcessorHasNoAvx) {
    selectConvolveKernels(processor(false));
    EXPECT_EQ(g_convolve_i16_i16, convolve_i16_i16_SSSE3);
    EXPECT_EQ(g_convolve_i16_i32, convolve_i16_i32_SSSE3);
}

TEST_F(ConvolveSelection, IsNeverTakenBack) {
    selectConvolveKernels(processor(true));
    selectConvolveKernels(processor(false));
    EXPECT_EQ(g_convolve_i16_i16, convolve_i16_i16_AVX);
    EXPECT_EQ(g_convolve_i16_i32, convolve_i16_i32_AVX);
}

TEST_F(ConvolveSelection, OnThisProcessorFollowsItsAvx) {
    const CPUInfo cpu;
    selectConvolveKernels(cpu);
    EXPECT_EQ(g_convolve_i16_i16 == convolve_i16_i16_AVX, cpu.has_avx);
}

TEST_F(ConvolveSelection, IsNamed) {
    EXPECT_STREQ(selectedConvolveVariant()->name, "ssse3");
    selectConvolveKernels(processor(true));
    EXPECT_STREQ(selectedConvolveVariant()->name, "avx");
}

TEST_F(ConvolveSelection, HasNoNameForKernelsOfSomebodyElse) {
    g_convolve_i16_i16 = [](const int16_t*, const int16_t*, int16_t*, int, int) {};
    EXPECT_EQ(selectedConvolveVariant(), nullptr);
}

}  // namespace
}  // namespace quill::media::se_wrapper
