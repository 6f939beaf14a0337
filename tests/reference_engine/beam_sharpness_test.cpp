// How sharp a beam may be: its output has the least power.
#include "reference_engine/audio/beam_sharpness.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

using namespace reference_engine;

namespace {

class BeamSharpnessTest : public testing::Test {
  protected:
    // A second and a half of noise; of the noise in `difference`, robust weights let `common` through, and as much noise of
    // their own.
    float shareAfter(double common, float most = 1) {
        std::mt19937 random(1);
        std::normal_distribution<double> noise(0, 1000);
        sharpness_.init();
        for (int b = 0; b < 150; ++b) {
            int16_t robust[kBlock], difference[kBlock];
            for (int i = 0; i < kBlock; ++i) {
                const double value = noise(random);
                difference[i] = static_cast<int16_t>(value);
                robust[i] = static_cast<int16_t>(common * value + noise(random));
            }
            sharpness_.update(robust, difference, true, most);
        }
        return sharpness_.share();
    }

    BeamSharpness sharpness_;
};

}  // namespace

TEST_F(BeamSharpnessTest, IsTheShareOfLeastPower) {
    for (const double share : {0.2, 0.5, 0.8}) {
        EXPECT_NEAR(shareAfter(-share), share, 0.02);
    }
}

TEST_F(BeamSharpnessTest, IsBetweenBothWeights) {
    EXPECT_EQ(shareAfter(-2), 1);
    EXPECT_EQ(shareAfter(1), 0);
}

TEST_F(BeamSharpnessTest, IsNeverMoreThanAllowed) {
    EXPECT_EQ(shareAfter(-0.8, 0.25F), 0.25F);
    EXPECT_EQ(shareAfter(-0.8, 0), 0);
    EXPECT_EQ(shareAfter(-0.8, -1), 0);
    EXPECT_EQ(shareAfter(-2, 3), 1);
}

TEST_F(BeamSharpnessTest, StartsRobustAndShowsTheShareBefore) {
    EXPECT_EQ(sharpness_.share(), 0);
    int16_t difference[kBlock], robust[kBlock];
    std::fill_n(difference, kBlock, int16_t{-32768});
    std::fill_n(robust, kBlock, int16_t{32767});
    sharpness_.update(robust, difference, true, 1);
    EXPECT_EQ(sharpness_.before(), 0);
    const float first = sharpness_.share();
    EXPECT_GT(first, 0.9F);
    sharpness_.update(robust, difference, true, 0.1F);
    EXPECT_EQ(sharpness_.before(), first);
    EXPECT_EQ(sharpness_.share(), 0.1F);
}

TEST_F(BeamSharpnessTest, DoesNotFollowABlockThatDoesNotCount) {
    const float before = shareAfter(-0.5);
    int16_t difference[kBlock], robust[kBlock];
    std::fill_n(difference, kBlock, int16_t{32767});
    std::fill_n(robust, kBlock, int16_t{32767});
    sharpness_.update(robust, difference, false, 1);
    EXPECT_EQ(sharpness_.share(), before);
    sharpness_.update(robust, difference, true, 1);
    EXPECT_LT(sharpness_.share(), before / 2);
}

TEST_F(BeamSharpnessTest, StaysRobustInSilence) {
    const int16_t silence[kBlock] = {};
    for (int b = 0; b < 10; ++b) sharpness_.update(silence, silence, true, 1);
    EXPECT_EQ(sharpness_.share(), 0);
    EXPECT_FALSE(std::signbit(sharpness_.share()));
}
