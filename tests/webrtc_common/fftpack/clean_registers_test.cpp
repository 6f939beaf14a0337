// Every build leaves the upper halves of the AVX registers zero.
#include <gtest/gtest.h>

#include "kernel_check/references/transforms.h"
#include "tests/webrtc_common/each_variant.h"
#include "tests/webrtc_common/upper_halves.h"
#include "webrtc_common/fftpack/fftpack.h"
#include "webrtc_common/fftpack/real_fft.h"

namespace quill::test {
namespace {

class RealFftRegisters : public EachVariant<fftpack::RealFftVariant> {
  protected:
    void SetUp() override {
        EachVariant::SetUp();
        if (!CPUInfo().has_avx) GTEST_SKIP() << "this processor has no avx, so it has no upper halves";
    }
};
INSTANTIATE_FOR_EACH_VARIANT(RealFftRegisters, fftpack::kRealFftVariants);

TEST_P(RealFftRegisters, HaveNoUpperHalvesInUseAfterATransform) {
    for (const int n : smallLengths()) {
        const auto size = static_cast<size_t>(n);
        std::vector<float> values(size, -1), twiddles(2 * size + 15);
        std::vector<int16_t> samples(size + 2, -1);
        std::vector<int> factors(20);
        __ogg_fdrffti(n, twiddles.data(), factors.data());
        GetParam().forward(n, values.data(), twiddles.data(), factors.data());
        ASSERT_TRUE(upperHalvesAreZero()) << n;
        GetParam().backward(n, values.data(), twiddles.data(), factors.data());
        ASSERT_TRUE(upperHalvesAreZero()) << n;
        GetParam().forward_samples(n, samples.data(), 1, samples.data(), values.data(), twiddles.data(),
                                   factors.data());
        ASSERT_TRUE(upperHalvesAreZero()) << n;
        GetParam().backward_samples(n, samples.data(), 1, samples.data(), values.data(), twiddles.data(),
                                    factors.data());
        ASSERT_TRUE(upperHalvesAreZero()) << n;
    }
}

}  // namespace
}  // namespace quill::test
