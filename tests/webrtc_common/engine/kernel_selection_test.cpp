// The builds of the kernels that a start selects.
#include <gtest/gtest.h>

#include "tests/webrtc_common/engine/bound_properties.h"
#include "webrtc_common/convolve/convolve.h"
#include "webrtc_common/fftpack/real_fft.h"
#include "webrtc_common/se_wrapper/dsp/dsp_kernels.h"
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

TEST(Start, SelectsTheWidestBuildsThatTheProcessorHas) {
    const quill::test::BoundProperties properties;
    p_signal_essence_library.node()->set<std::string>("test_engines/full");
    initSignalEssenceOptimForTests();
    const quill::CPUInfo cpu;
    EXPECT_STREQ(cpu.has_avx2 ? "avx2" : cpu.has_avx ? "avx" : "sse41", quill::fftpack::g_real_fft->name);
    EXPECT_STREQ(cpu.has_avx2 ? "avx2" : "sse41", g_dsp_kernels->name);
}

TEST(OpeningAnEngine, SelectsNoKernels) {
    openSignalEssenceDynamicLibrary("test_engines/full");
    EXPECT_EQ(&convolve_i16_i16_SSSE3, g_convolve_i16_i16);
    EXPECT_EQ(&convolve_i16_i32_SSSE3, g_convolve_i16_i32);
    EXPECT_STREQ("sse41", quill::fftpack::g_real_fft->name);
    EXPECT_STREQ("sse41", g_dsp_kernels->name);
}

TEST(ProcessorWithoutAvx, KeepsTheKernelsOfTheFloor) {
    quill::CPUInfo cpu;
    cpu.has_avx = cpu.has_avx2 = false;
    selectConvolveKernels(cpu);
    quill::fftpack::selectRealFft(cpu);
    selectDspKernels(cpu);
    EXPECT_EQ(&convolve_i16_i16_SSSE3, g_convolve_i16_i16);
    EXPECT_EQ(&convolve_i16_i32_SSSE3, g_convolve_i16_i32);
    EXPECT_STREQ("sse41", quill::fftpack::g_real_fft->name);
    EXPECT_STREQ("sse41", g_dsp_kernels->name);
}

}  // namespace
