// The FIR filter's crossfade between filtered and dry, sample by sample.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "kernel_check/problem/fillers.h"
#include "tests/webrtc_common/dsp/reference_filter.h"

namespace quill::test {
namespace {

using media::se_wrapper::Filter;
using media::se_wrapper::kHighPass600Hz;
using Samples = std::vector<int16_t>;

constexpr float kGains[] = {1.0F, 0.0F,  0.0F, 0.5F, 0.5F, 1.0F,  0.1F, 0.3F,
                            0.0F, 0.25F, 1.0F, 1.0F, 0.9F, 1e-9F, 0.0F, -0.0F};

// The filtered signal is silence, so that the output is the dry signal's share of a constant.
class DryShare : public ::testing::Test {
  protected:
    Samples block(float gain) { return filtered(filter_, Samples(kFilterBlock, 16000), gain); }

    const int16_t silence_ = 0;
    const Filter::FilterParams params_{&silence_, 1};
    Filter filter_{params_};
};

TEST(FilterCrossfade, IsThatOfTheReferenceAtEverySample) {
    for (const Filler& filler : kFillers) {
        std::mt19937 random(1);
        Filter filter(kHighPass600Hz);
        ReferenceFilter reference(coeffsOf(kHighPass600Hz));
        for (const float gain : kGains) {
            Samples block(kFilterBlock);
            filler.fill(block.data(), block.size(), random);
            ASSERT_EQ(filtered(filter, block, gain), reference.block(block, gain))
                << filler.name << " to gain " << gain;
        }
    }
}

TEST(FilterCrossfade, IsThatOfTheReferenceForEveryNumberOfTaps) {
    for (int32_t taps = 1; taps <= 129; taps += 2) {
        NoiseBlocks noise;
        Samples coeffs = noise.next();
        coeffs.resize(static_cast<size_t>(taps));
        const Filter::FilterParams params{coeffs.data(), taps};
        Filter filter(params);
        ReferenceFilter reference(coeffs);
        for (const float gain : kGains) {
            const Samples block = noise.next();
            ASSERT_EQ(filtered(filter, block, gain), reference.block(block, gain))
                << taps << " taps, to gain " << gain;
        }
    }
}

TEST_F(DryShare, ReachesTheNewGainAtTheStartOfTheNextBlock) {
    const Samples fade = block(0.0F);
    EXPECT_EQ(fade[1], 100);
    EXPECT_EQ(fade[80], 8000);
    EXPECT_EQ(fade[159], 15900);  // one step short
    EXPECT_EQ(block(0.0F), Samples(kFilterBlock, 16000));
}

TEST_F(DryShare, IsAConstantHalfAtGainOneHalfInEveryBlockAfterTheFirst) {
    block(0.5F);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(block(0.5F), Samples(kFilterBlock, 8000));
}

TEST(FilterCrossfade, MixesHalfOfBothAtGainOneHalf) {
    const int16_t half = 16384;
    const Filter::FilterParams params{&half, 1};
    Filter filter(params);
    filtered(filter, Samples(kFilterBlock, 1000), 0.5F);
    EXPECT_EQ(filtered(filter, Samples(kFilterBlock, 1000), 0.5F), Samples(kFilterBlock, 750));
}

TEST_F(DryShare, IsTruncatedTowardZero) {
    filtered(filter_, Samples(kFilterBlock, 3), 0.5F);
    EXPECT_EQ(filtered(filter_, Samples(kFilterBlock, 3), 0.5F)[100], 1);
    filtered(filter_, Samples(kFilterBlock, -3), 0.5F);
    EXPECT_EQ(filtered(filter_, Samples(kFilterBlock, -3), 0.5F)[100], -1);
}

TEST_F(DryShare, StaysDryFromGainZeroToMinusZero) {
    block(0.0F);
    EXPECT_EQ(block(-0.0F), Samples(kFilterBlock, 16000));
    EXPECT_EQ(block(0.0F), Samples(kFilterBlock, 16000));
}

TEST_F(DryShare, SaturatesAtGainsOutsideZeroToOne) {
    block(-3.0F);
    EXPECT_EQ(block(-3.0F), Samples(kFilterBlock, 32767));
    block(5.0F);
    EXPECT_EQ(block(5.0F), Samples(kFilterBlock, -32768));
    block(-1e30F);
    EXPECT_EQ(block(-1e30F), Samples(kFilterBlock, 32767));
}

TEST_F(DryShare, IsItselfAgainOneBlockAfterAGainThatIsNotFinite) {
    for (const float gain : {std::nanf(""), std::numeric_limits<float>::infinity()}) {
        block(gain);
        block(0.0F);
        EXPECT_EQ(block(0.0F), Samples(kFilterBlock, 16000)) << gain;
    }
}

}  // namespace
}  // namespace quill::test
