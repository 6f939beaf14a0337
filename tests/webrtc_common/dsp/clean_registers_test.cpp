// Every build of the 16-bit routines leaves the upper halves of the AVX registers zero.
#include <gtest/gtest.h>

#include <vector>

#include "tests/webrtc_common/dsp/each_build.h"
#include "tests/webrtc_common/upper_halves.h"
#include "webrtc_common/se_wrapper/dsp/block_size.h"

namespace quill::test {
namespace {

class DspRegisters : public EachDspBuild {
  protected:
    void SetUp() override {
        EachDspBuild::SetUp();
        if (!CPUInfo().has_avx) GTEST_SKIP() << "this processor has no avx, so it has no upper halves";
    }
};
INSTANTIATE_FOR_EACH_DSP_BUILD(DspRegisters);

TEST_P(DspRegisters, HaveNoUpperHalvesInUseAfterProducts) {
    for (size_t n = 0; n <= 33; ++n) {
        const std::vector<int16_t> values(2 * n + 1, -1);
        std::vector<int16_t> out(2 * n + 1);
        GetParam().multiplyComplex(values.data(), values.data(), out.data(), n);
        ASSERT_TRUE(upperHalvesAreZero()) << n;
    }
}

TEST_P(DspRegisters, HaveNoUpperHalvesInUseAfterDeinterleaving) {
    for (size_t channels = 8; channels <= 17; ++channels) {
        const std::vector<int16_t> interleaved(channels * media::se_wrapper::BLOCK_SIZE, -1);
        std::vector<int16_t> rows(8 * media::se_wrapper::BLOCK_SIZE);
        GetParam().deinterleave(interleaved.data(), channels, rows.data());
        ASSERT_TRUE(upperHalvesAreZero()) << channels;
    }
}

}  // namespace
}  // namespace quill::test
