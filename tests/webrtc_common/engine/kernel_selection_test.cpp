// The convolution kernels that a start selects.
#include <gtest/gtest.h>

#include "tests/webrtc_common/engine/bound_properties.h"
#include "webrtc_common/convolve/convolve.h"
#include "webrtc_common/se_wrapper/engine/library_property.h"
#include "webrtc_common/se_wrapper/engine/load.h"

using namespace quill::media::se_wrapper;

namespace {

TEST(Start, SelectsTheAvxKernelsExactlyWhenTheProcessorHasAvx) {
    const quill::test::BoundProperties properties;
    p_signal_essence_library.node()->set<std::string>("test_engines/full");
    initSignalEssenceOptimForTests();
    const bool avx = quill::CPUInfo().has_avx;
    EXPECT_EQ(avx ? &convolve_i16_i16_AVX : &convolve_i16_i16_SSSE3, g_convolve_i16_i16);
    EXPECT_EQ(avx ? &convolve_i16_i32_AVX : &convolve_i16_i32_SSSE3, g_convolve_i16_i32);
}

TEST(OpeningAnEngine, SelectsNoKernels) {
    openSignalEssenceDynamicLibrary("test_engines/full");
    EXPECT_EQ(&convolve_i16_i16_SSSE3, g_convolve_i16_i16);
    EXPECT_EQ(&convolve_i16_i32_SSSE3, g_convolve_i16_i32);
}

TEST(ProcessorWithoutAvx, KeepsTheSsse3Kernels) {
    quill::CPUInfo cpu;
    cpu.has_avx = false;
    selectConvolveKernels(cpu);
    EXPECT_EQ(&convolve_i16_i16_SSSE3, g_convolve_i16_i16);
    EXPECT_EQ(&convolve_i16_i32_SSSE3, g_convolve_i16_i32);
}

}  // namespace
