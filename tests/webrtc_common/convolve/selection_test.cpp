// Which build the pointers hold. Each test starts with the pointers as they are after loading.
#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

#include "webrtc_common/convolve/convolve.h"

namespace quill::media::se_wrapper {
namespace {

// A processor with SSSE3 and these features, and no other relevant ones.
CPUInfo processor(std::initializer_list<bool CPUInfo::*> features) {
    CPUInfo cpu;
    for (const ConvolveVariant& variant : kConvolveVariants) cpu.*variant.feature = false;
    cpu.has_ssse3 = true;
    for (bool CPUInfo::*feature : features) cpu.*feature = true;
    return cpu;
}

CPUInfo processor(bool avx) {
    return avx ? processor({&CPUInfo::has_avx}) : processor({});
}

class ConvolveSelection : public ::testing::Test {
  protected:
    void TearDown() override {
        g_convolve_i16_i16 = convolve_i16_i16_SSSE3;
        g_convolve_i16_i32 = convolve_i16_i32_SSSE3;
        g_pair_kernels = &kConvolveVariants[0].pairs;
    }
};

// Read while this program's own static objects are initialised, before main.
ConvolveI16I16* const initial_i16_i16 = g_convolve_i16_i16;
ConvolveI16I32* const initial_i16_i32 = g_convolve_i16_i32;

const PairKernels* const initial_pairs = g_pair_kernels;

// What the AVX entry points run before a selection. Read before main, too.
const std::string initial_avx_body = [] {
    g_convolve_i16_i16 = convolve_i16_i16_AVX;
    g_convolve_i16_i32 = convolve_i16_i32_AVX;
    const std::string name = selectedConvolveVariant()->name;
    g_convolve_i16_i16 = convolve_i16_i16_SSSE3;
    g_convolve_i16_i32 = convolve_i16_i32_SSSE3;
    return name;
}();

TEST_F(ConvolveSelection, StartsWithTheSsse3Builds) {
    EXPECT_EQ(initial_i16_i16, convolve_i16_i16_SSSE3);
    EXPECT_EQ(initial_i16_i32, convolve_i16_i32_SSSE3);
    EXPECT_EQ(initial_pairs, &kConvolveVariants[0].pairs);
}

TEST_F(ConvolveSelection, StartsWithTheNarrowestBodyBehindTheAvxEntryPoints) {
    EXPECT_EQ(initial_avx_body, "avx");
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

TEST_F(ConvolveSelection, IsNeverReversed) {
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
    EXPECT_STREQ(selectedConvolveVariant()->entry, "ssse3");
    selectConvolveKernels(processor(true));
    EXPECT_STREQ(selectedConvolveVariant()->name, "avx");
    EXPECT_STREQ(selectedConvolveVariant()->entry, "avx");
}

TEST_F(ConvolveSelection, RunsTheWidestBodyOfTheProcessorBehindTheAvxEntryPoints) {
    const auto avx = &CPUInfo::has_avx;
    const auto avx2 = &CPUInfo::has_avx2;
    const auto avx_vnni = &CPUInfo::has_avx_vnni;
    const auto avx512_vnni = &CPUInfo::has_avx512_vnni;
    const struct {
        CPUInfo cpu;
        const char* body;
    } rows[] = {
        {processor({avx}), "avx"},
        {processor({avx, avx2}), "avx2"},
        {processor({avx, avx2, &CPUInfo::has_avx512}), "avx2"},
        {processor({avx, avx2, avx_vnni}), "avx-vnni"},
        {processor({avx, avx2, avx512_vnni}), "avx512-vnni"},
        {processor({avx, avx2, avx_vnni, avx512_vnni}), "avx512-vnni"},
    };
    for (const auto& row : rows) {
        selectConvolveKernels(row.cpu);
        EXPECT_STREQ(selectedConvolveVariant()->name, row.body);
        EXPECT_EQ(g_pair_kernels, &selectedConvolveVariant()->pairs);
        EXPECT_STREQ(selectedConvolveVariant()->entry, "avx");
        EXPECT_EQ(g_convolve_i16_i16, convolve_i16_i16_AVX);
        EXPECT_EQ(g_convolve_i16_i32, convolve_i16_i32_AVX);
    }
}

TEST_F(ConvolveSelection, RunsNoWiderBodyOnAProcessorWithoutAvx) {
    selectConvolveKernels(processor({&CPUInfo::has_avx2, &CPUInfo::has_avx512_vnni}));
    EXPECT_STREQ(selectedConvolveVariant()->name, "ssse3");
}

TEST_F(ConvolveSelection, HasNoNameForOtherKernels) {
    g_convolve_i16_i16 = [](const int16_t*, const int16_t*, int16_t*, int, int) {};
    EXPECT_EQ(selectedConvolveVariant(), nullptr);
}

}  // namespace
}  // namespace quill::media::se_wrapper
