// Every build leaves the upper halves of the AVX registers zero. On some processors the SSE code that follows
// a kernel would be slow if they were in use.
#include <gtest/gtest.h>

#include <vector>

#include "tests/webrtc_common/convolve/each_build.h"
#include "tests/webrtc_common/upper_halves.h"

namespace quill::test {
namespace {

class ConvolveRegisters : public EachBuild {
  protected:
    void SetUp() override {
        EachBuild::SetUp();
        if (!CPUInfo().has_avx) GTEST_SKIP() << "this processor has no avx, so it has no upper halves";
    }
    // More than one group of the widest build, with a remainder for each narrower one.
    static constexpr int kOutputs = 160 + 32 + 16 + 8;
    const std::vector<int16_t> coeffs_ = std::vector<int16_t>(72, -1);
    const std::vector<int16_t> signal_ = std::vector<int16_t>(kOutputs + 72, -1);
};
INSTANTIATE_FOR_EACH_BUILD(ConvolveRegisters);

TEST_P(ConvolveRegisters, HaveNoUpperHalvesInUseAfterNarrowedSums) {
    for (int num_out = 8; num_out <= kOutputs; num_out += 8) {
        int16_t out[kOutputs];
        i16_i16()(coeffs_.data(), signal_.data(), out, num_out, 72);
        ASSERT_TRUE(upperHalvesAreZero()) << num_out;
    }
}

TEST_P(ConvolveRegisters, HaveNoUpperHalvesInUseAfterShiftedSums) {
    for (int num_out = 8; num_out <= kOutputs; num_out += 8) {
        int32_t out[kOutputs];
        i16_i32()(coeffs_.data(), signal_.data(), out, 5, num_out, 72, 2);
        ASSERT_TRUE(upperHalvesAreZero()) << num_out;
    }
}

}  // namespace
}  // namespace quill::test
