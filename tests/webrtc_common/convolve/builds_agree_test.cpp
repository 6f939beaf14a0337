// The AVX entry points give the bits of the SSSE3 build, whatever body runs behind them.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "kernel_check/problem/problem.h"
#include "kernel_check/references/convolve.h"
#include "tests/webrtc_common/convolve/each_build.h"

namespace quill::test {
namespace {

class ConvolveBuilds : public EachBuild {
  protected:
    void SetUp() override {
        EachBuild::SetUp();
        if (IsSkipped()) return;
        if (GetParam().entry == std::string("ssse3")) GTEST_SKIP() << "what the others are compared with";
        CPUInfo cpu;
        for (const ConvolveVariant& variant : kConvolveVariants) cpu.*variant.feature = false;
        cpu.has_avx = cpu.*GetParam().feature = true;
        media::se_wrapper::selectConvolveKernels(cpu);
        ASSERT_STREQ(media::se_wrapper::selectedConvolveVariant()->name, GetParam().name);
    }
    void TearDown() override {
        g_convolve_i16_i16 = convolve_i16_i16_SSSE3;
        g_convolve_i16_i32 = convolve_i16_i32_SSSE3;
    }
    // Calls `compare` with inputs of every pair of lengths and contents.
    template <class Compare>
    static void forEachInput(Compare compare) {
        std::mt19937 random(11);
        for (const int num_out : kLengths) {
            for (const int num_taps : kLengths) {
                for (const Filler& filler : kFillers) {
                    std::vector<int16_t> coeffs(wholeEights(num_taps));
                    std::vector<int16_t> signal(signalExtent(num_out, num_taps));
                    filler.fill(coeffs.data(), coeffs.size(), random);
                    filler.fill(signal.data(), signal.size(), random);
                    compare(coeffs.data(), signal.data(), num_out, num_taps);
                }
            }
        }
    }
};
INSTANTIATE_FOR_EACH_BUILD(ConvolveBuilds);

TEST_P(ConvolveBuilds, NarrowTheSameSums) {
    forEachInput([](const int16_t* coeffs, const int16_t* signal, int num_out, int num_taps) {
        std::vector<int16_t> ssse3(wholeEights(num_out));
        std::vector<int16_t> avx(wholeEights(num_out));
        convolve_i16_i16_SSSE3(coeffs, signal, ssse3.data(), num_out, num_taps);
        convolve_i16_i16_AVX(coeffs, signal, avx.data(), num_out, num_taps);
        ASSERT_EQ(ssse3, avx);
    });
}

TEST_P(ConvolveBuilds, ShiftTheSameSums) {
    forEachInput([](const int16_t* coeffs, const int16_t* signal, int num_out, int num_taps) {
        std::vector<int32_t> ssse3(wholeEights(num_out));
        std::vector<int32_t> avx(wholeEights(num_out));
        convolve_i16_i32_SSSE3(coeffs, signal, ssse3.data(), 5, num_out, num_taps, 2);
        convolve_i16_i32_AVX(coeffs, signal, avx.data(), 5, num_out, num_taps, 2);
        ASSERT_EQ(ssse3, avx);
    });
}

}  // namespace
}  // namespace quill::test
