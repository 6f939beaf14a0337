// The residual echo behind the beam, against that at the microphones.
#include <gtest/gtest.h>

#include "reference_engine/audio/echo/residual_echo.h"

using namespace reference_engine;

namespace {

constexpr int kBin = 40;

class ResidualEchoBehindTheBeam : public testing::Test {
  protected:
    ResidualEchoBehindTheBeam() { spectra_.init(); }

    // Of an echo that the canceller expects.
    void update(float unknown_share, float sharpness) {
        EchoBins expected;
        for (float& value : expected.value) value = 1000;
        residual_.init();
        residual_.update(spectra_, expected, unknown_share, sharpness);
    }
    float behindTheBeam(float unknown_share, float sharpness) {
        update(unknown_share, sharpness);
        return residual_.framePower()[kBin];
    }
    float atTheMicrophones(float unknown_share, float sharpness) {
        update(unknown_share, sharpness);
        return residual_.power()[kBin];
    }

    MicrophoneSpectra spectra_;
    ResidualEcho residual_;
};

}  // namespace

TEST_F(ResidualEchoBehindTheBeam, IsAThirdAsStrongWithSharpWeightsAndKnownPaths) {
    EXPECT_FLOAT_EQ(behindTheBeam(0, 1), 0.3F * behindTheBeam(0, 0));
    EXPECT_FLOAT_EQ(behindTheBeam(0, 0.5F), 0.65F * behindTheBeam(0, 0));
}

// It may be stronger than expected.
TEST_F(ResidualEchoBehindTheBeam, IsAsStrongWhileNoPathIsKnown) {
    EXPECT_FLOAT_EQ(behindTheBeam(1, 1), behindTheBeam(1, 0));
    EXPECT_GT(behindTheBeam(1, 0), behindTheBeam(0, 0));
}

TEST_F(ResidualEchoBehindTheBeam, IsTheSameAtTheMicrophonesWithAnyWeights) {
    EXPECT_GT(atTheMicrophones(0, 0), 0);
    EXPECT_EQ(atTheMicrophones(0, 1), atTheMicrophones(0, 0));
}
