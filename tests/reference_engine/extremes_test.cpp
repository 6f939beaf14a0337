// Full-scale input and missing input: nothing overflows, and nothing remains in the state.
#include "tests/reference_engine/engine_under_test.h"
#include "tests/reference_engine/signals.h"
#include "tools/scene/scene.h"

using namespace reference_engine_test;

namespace {

class Extremes : public EngineTest {
  protected:
    // From every location; the response of the search always stays within 0 to 1.
    void lookEverywhere(const Samples& samples) {
        const float* response = engine.SEDiagGetFloat32Array(engine.diag("mmfx_response"));
        for (int location = 0; location < kLocations; ++location) {
            engine.MMIfSetManualLocation(location, 0);
            engine.processAlike(samples);
            for (int d = 0; d < kLocations; ++d) {
                EXPECT_TRUE(response[d] >= 0 && response[d] < 1.001) << response[d];
            }
        }
    }
};
INSTANTIATE_FOR_EACH_BUILD(Extremes);

const Samples kSilence(100 * kBlock, 0);

// Blocks until the output no longer depends on earlier input: it leaves the filters after one block,
// the frames of the noise reduction after three, their overlap after five, the de-emphasis soon after.
constexpr size_t kSettled = 6 * kBlock;

}  // namespace

TEST_P(Extremes, SilenceStaysSilence) {
    EXPECT_EQ(engine.processAlike(kSilence), kSilence);
}

TEST_P(Extremes, AnOffsetOfAnySizeLeavesNoTrace) {
    for (const int16_t offset : {int16_t{-32768}, int16_t{32767}, int16_t{1}}) {
        engine.MMIfInit(0);
        const Samples out = engine.processAlike(Samples(12 * kBlock, offset));
        EXPECT_EQ(Samples(out.begin() + kSettled, out.end()), Samples(12 * kBlock - kSettled, 0)) << offset;
    }
}

// A sum that wraps would invert the peaks.
TEST_P(Extremes, AFullScaleSquareSaturatesInsteadOfWrapping) {
    engine.MMIfSetNoiseReductionBypass(1);
    const Samples in = square(100 * kBlock, 160);
    const Samples out = engine.processAlike(in);
    for (size_t i = 2000; i + kBlock < out.size(); ++i) {
        const size_t phase = (i - kDelay) % 80;
        if (phase < 8 || phase > 71) continue;
        EXPECT_GT(in[i - kDelay] * out[i], 0) << i;
    }
}

TEST_P(Extremes, AlternatingExtremesKeepEveryFigureInRange) {
    lookEverywhere(square(20 * kBlock, 2));
}

TEST_P(Extremes, FullScaleNoiseKeepsEveryFigureInRange) {
    lookEverywhere(whiteNoise(100 * kBlock, 6, 1));
}

TEST_P(Extremes, ALoudBurstLeavesNoTrace) {
    engine.processAlike(whiteNoise(100 * kBlock, 6, 1));
    const Samples out = engine.processAlike(kSilence);
    EXPECT_EQ(Samples(out.begin() + kSettled, out.end()), Samples(100 * kBlock - kSettled, 0));
}

// With the noise reduction, whose frames these signals fill completely.
TEST_P(Extremes, DoNotImpairTheNoiseReduction) {
    se_scene::SceneOptions options;
    options.seconds = 3;
    options.array_radius_m = arrayRadiusOf(GetParam());
    const auto talker = se_scene::makeScene(options).mixture();
    const auto heard = [&] {
        engine.MMIfSetManualLocation(2, 0);
        return powerOf(engine.process(talker), 16000);
    };
    const double fresh = heard();
    const Samples all_extremes[] = {square(100 * kBlock, 160), square(100 * kBlock, 2), kSilence,
                                    Samples(100 * kBlock, -32768), whiteNoise(100 * kBlock, 6, 1)};
    for (const Samples& extremes : all_extremes) {
        engine.MMIfInit(0);
        engine.processAlike(extremes);
        EXPECT_NEAR(decibels(heard() / fresh), 0, 2);
    }
}
