// Which build of the real FFT the entry points run. Each test starts with the selection as it is after
// loading.
#include <gtest/gtest.h>

#include "webrtc_common/fftpack/fftpack.h"
#include "webrtc_common/fftpack/real_fft.h"

namespace quill::fftpack {
namespace {

CPUInfo processor(bool avx, bool avx2 = false) {
    CPUInfo cpu;
    cpu.has_avx = avx;
    cpu.has_avx2 = avx2;
    return cpu;
}

// Read while this program's own static objects are initialised, before main.
const RealFftVariant* const initial = g_real_fft;

class RealFftSelection : public ::testing::Test {
  protected:
    void TearDown() override { g_real_fft = &kRealFftVariants[0]; }
};

TEST_F(RealFftSelection, StartsWithTheBuildForSse41) {
    EXPECT_STREQ(initial->name, "sse41");
}

TEST_F(RealFftSelection, TakesTheBuildForAvxWhenTheProcessorHasAvx) {
    selectRealFft(processor(true));
    EXPECT_STREQ(g_real_fft->name, "avx");
}

TEST_F(RealFftSelection, TakesTheBuildForAvx2WhenTheProcessorHasAvx2) {
    selectRealFft(processor(true, true));
    EXPECT_STREQ(g_real_fft->name, "avx2");
}

TEST_F(RealFftSelection, KeepsTheBuildForSse41WhenTheProcessorHasNoAvx) {
    selectRealFft(processor(false));
    EXPECT_STREQ(g_real_fft->name, "sse41");
}

TEST_F(RealFftSelection, IsNeverReversed) {
    selectRealFft(processor(true));
    selectRealFft(processor(false));
    EXPECT_STREQ(g_real_fft->name, "avx");
}

TEST_F(RealFftSelection, IsWhatTheEntryPointsRun) {
    constexpr RealFft* kForward = [](int, float* r, float*, const int*) { r[0] = 1.0f; };
    constexpr RealFft* kBackward = [](int, float* r, float*, const int*) { r[0] = 2.0f; };
    const RealFftVariant other = {{"other", &CPUInfo::has_sse41}, kForward, kBackward, nullptr, nullptr};
    g_real_fft = &other;
    float r = 0, wsave[17] = {};
    int ifac[20] = {};
    __ogg_fdrfftf(1, &r, wsave, ifac);
    EXPECT_EQ(r, 1.0f);
    __ogg_fdrfftb(1, &r, wsave, ifac);
    EXPECT_EQ(r, 2.0f);
}

}  // namespace
}  // namespace quill::fftpack
