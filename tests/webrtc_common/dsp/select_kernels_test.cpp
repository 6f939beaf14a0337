// Which build of each kernel family each processor gets. Each test starts with the selection as it is after
// loading.
#include "webrtc_common/se_wrapper/dsp/select_kernels.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

#include "webrtc_common/convolve/convolve.h"
#include "webrtc_common/fftpack/real_fft.h"
#include "webrtc_common/se_wrapper/dsp/dsp_kernels.h"

namespace quill::media::se_wrapper {
namespace {

using Feature = bool CPUInfo::*;

constexpr Feature kSsse3 = &CPUInfo::has_ssse3;
constexpr Feature kSse41 = &CPUInfo::has_sse41;
constexpr Feature kAvx = &CPUInfo::has_avx;
constexpr Feature kAvx2 = &CPUInfo::has_avx2;
constexpr Feature kAvxVnni = &CPUInfo::has_avx_vnni;
constexpr Feature kAvx512 = &CPUInfo::has_avx512;
constexpr Feature kAvx512Vnni = &CPUInfo::has_avx512_vnni;

CPUInfo processor(std::initializer_list<Feature> features) {
    CPUInfo cpu;
    for (const Feature feature : {kSsse3, kSse41, kAvx, kAvx2, kAvxVnni, kAvx512, kAvx512Vnni})
        cpu.*feature = false;
    for (const Feature feature : features) cpu.*feature = true;
    return cpu;
}

// "convolution avx, real_fft avx, dsp sse41"
std::string selected() {
    std::string text;
    for (const auto& [family, variant] : selectedKernels()) {
        text += (text.empty() ? "" : ", ") + std::string(family) + " " + (variant == nullptr ? "?" : variant);
    }
    return text;
}

void selectTheFloor() {
    g_convolve_i16_i16 = convolve_i16_i16_SSSE3;
    g_convolve_i16_i32 = convolve_i16_i32_SSSE3;
    fftpack::g_real_fft = fftpack::kRealFftVariants.begin();
    g_dsp_kernels = kDspVariants.begin();
}

std::string selectedFor(std::initializer_list<Feature> features) {
    selectTheFloor();
    selectKernels(processor(features));
    return selected();
}

class KernelSelection : public ::testing::Test {
  protected:
    void TearDown() override { selectTheFloor(); }
};

constexpr const char* kFloor = "convolution ssse3, real_fft sse41, dsp sse41";

TEST_F(KernelSelection, StartsWithTheFloor) {
    EXPECT_EQ(selected(), kFloor);
}

TEST_F(KernelSelection, GivesEachFamilyTheWidestBuildThatTheProcessorRuns) {
    EXPECT_EQ(selectedFor({}), kFloor);
    EXPECT_EQ(selectedFor({kSsse3, kSse41}), kFloor);
    EXPECT_EQ(selectedFor({kSsse3, kSse41, kAvx}), "convolution avx, real_fft avx, dsp sse41");
    EXPECT_EQ(selectedFor({kSsse3, kSse41, kAvx, kAvx2}), "convolution avx2, real_fft avx2, dsp avx2");
    EXPECT_EQ(selectedFor({kSsse3, kSse41, kAvx, kAvx2, kAvxVnni}),
              "convolution avx-vnni, real_fft avx2, dsp avx2");
    EXPECT_EQ(selectedFor({kSsse3, kSse41, kAvx, kAvx2, kAvx512}),
              "convolution avx2, real_fft avx2, dsp avx2");
    EXPECT_EQ(selectedFor({kSsse3, kSse41, kAvx, kAvx2, kAvx512, kAvx512Vnni}),
              "convolution avx512-vnni, real_fft avx2, dsp avx2");
    EXPECT_EQ(selectedFor({kSsse3, kSse41, kAvx, kAvx2, kAvxVnni, kAvx512, kAvx512Vnni}),
              "convolution avx512-vnni, real_fft avx2, dsp avx2");
}

TEST_F(KernelSelection, IsNeverReversed) {
    selectKernels(processor({kSsse3, kSse41, kAvx, kAvx2}));
    selectKernels(processor({kSsse3, kSse41}));
    EXPECT_EQ(selected(), "convolution avx2, real_fft avx2, dsp avx2");
}

// Programs list and check only the builds that the processor has.
TEST_F(KernelSelection, ARowNeedsTheFeatureThatItIsNamedAfter) {
    const struct {
        const char* name;
        Feature feature;
    } features[] = {{"ssse3", kSsse3}, {"sse41", kSse41},      {"avx", kAvx},
                    {"avx2", kAvx2},   {"avx-vnni", kAvxVnni}, {"avx512-vnni", kAvx512Vnni}};
    const auto check = [&](const KernelVariant& row) {
        for (const auto& [name, feature] : features)
            EXPECT_EQ(row.feature == feature, row.name == std::string(name));
    };
    for (const ConvolveVariant& row : kConvolveVariants) check(row);
    for (const fftpack::RealFftVariant& row : fftpack::kRealFftVariants) check(row);
    for (const DspVariant& row : kDspVariants) check(row);
}

TEST_F(KernelSelection, HasNoNameForFunctionsThatAreInNoTable) {
    g_convolve_i16_i32 = [](const int16_t*, const int16_t*, int32_t*, int, int, int, int) {};
    EXPECT_EQ(selected(), "convolution ?, real_fft sse41, dsp sse41");
}

struct Row : KernelVariant {
    int number;
};
constexpr Row kThreeRows[] = {{{"floor", kSsse3}, 0}, {{"middle", kAvx}, 1}, {{"widest", kAvx512}, 2}};

TEST(WidestVariant, IsTheLastRowThatRunsOfAnyNumberOfRows) {
    const KernelVariants<Row> rows(kThreeRows);
    EXPECT_EQ(rows.size(), 3u);
    EXPECT_EQ(widestAboveFloor(rows, processor({kSsse3, kAvx, kAvx512}))->number, 2);
    EXPECT_EQ(widestAboveFloor(rows, processor({kSsse3, kAvx}))->number, 1);
    EXPECT_EQ(widestAboveFloor(rows, processor({kSsse3, kAvx512}))->number, 2);
}

TEST(WidestVariant, IsNothingOnTheFloor) {
    EXPECT_EQ(widestAboveFloor(KernelVariants<Row>(kThreeRows), processor({kSsse3})), nullptr);
}

}  // namespace
}  // namespace quill::media::se_wrapper
