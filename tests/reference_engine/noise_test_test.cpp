// The microphone noise test.
#include "tests/reference_engine/engine_under_test.h"
#include "tests/reference_engine/signals.h"

using namespace reference_engine_test;

namespace {

constexpr size_t kBlocks = 203;  // the default of 200, and three to fill the first frame

class NoiseTest : public EngineTest {
  protected:
    const NoiseTestRecord& measured(const std::vector<Samples>& rows) {
        engine.MMIfStartNoiseTest();
        engine.process(rows);
        EXPECT_EQ(engine.MMIfNoiseTestIsRunning(), 0);
        return *engine.MMIfGetNoiseTestResults();
    }
    std::vector<Samples> noise(double level_dbfs) {
        std::vector<Samples> rows;
        for (uint32_t m = 0; m < kMicrophones; ++m) {
            rows.push_back(whiteNoise(kBlocks * kBlock, level_dbfs, m + 1));
        }
        return rows;
    }
};
INSTANTIATE_FOR_EACH_BUILD(NoiseTest);

const double kShareOfABand = decibels(250.0 / 8000);

}  // namespace

TEST_P(NoiseTest, MeasuresTheLevelOfKnownNoise) {
    const NoiseTestRecord& record = measured(noise(-40));
    for (const auto& row : record.level_dbfs) {
        for (const float level : row) EXPECT_NEAR(level, -40 + kShareOfABand, 1);
    }
}

TEST_P(NoiseTest, DistinguishesTheMicrophonesOfTheCircle) {
    std::vector<Samples> rows;
    for (uint32_t m = 0; m < kMicrophones; ++m) {
        rows.push_back(whiteNoise(kBlocks * kBlock, -30 - 5.0 * m, m + 1));
    }
    const NoiseTestRecord& record = measured(rows);
    for (int m = 0; m < 6; ++m) {
        EXPECT_NEAR(record.level_dbfs[12][m], -30 - 5 * (m + 1) + kShareOfABand, 1);
    }
}

TEST_P(NoiseTest, PutsAToneIntoItsBand) {
    const Samples tone = sine(kBlocks * kBlock, 1125, 3276.8);
    const NoiseTestRecord& record = measured(std::vector<Samples>(kMicrophones, tone));
    EXPECT_NEAR(record.level_dbfs[4][0], -20 + decibels(0.5), 0.1);
    EXPECT_LT(record.level_dbfs[6][0], -90);
}

TEST_P(NoiseTest, ShowsSilenceAtItsFloor) {
    const NoiseTestRecord& record =
        measured(std::vector<Samples>(kMicrophones, Samples(kBlocks * kBlock, 0)));
    EXPECT_EQ(record.level_dbfs[0][0], -120);
    EXPECT_EQ(record.level_dbfs[29][5], -120);
}

TEST_P(NoiseTest, HasNoResultsBeforeTheFirst) {
    EXPECT_EQ(engine.MMIfGetNoiseTestResults()->level_dbfs[7][3], -120);
    EXPECT_EQ(engine.MMIfNoiseTestIsRunning(), 0);
}

TEST_P(NoiseTest, KeepsTheLastResultsWhileItRuns) {
    const float before = measured(noise(-40)).level_dbfs[3][3];
    engine.MMIfStartNoiseTest();
    engine.processAlike(Samples((kBlocks - 1) * kBlock, 0));
    EXPECT_EQ(engine.MMIfNoiseTestIsRunning(), 1);
    EXPECT_EQ(engine.MMIfGetNoiseTestResults()->level_dbfs[3][3], before);
}

TEST_P(NoiseTest, MeasuresNothingFromBeforeItsStart) {
    engine.processAlike(whiteNoise(100 * kBlock, -10, 1));
    const NoiseTestRecord& record =
        measured(std::vector<Samples>(kMicrophones, Samples(kBlocks * kBlock, 0)));
    EXPECT_EQ(record.level_dbfs[5][2], -120);
}

TEST_P(NoiseTest, StartsAgainWhenAskedTo) {
    engine.MMIfStartNoiseTest();
    engine.processAlike(Samples(150 * kBlock, 0));
    engine.MMIfStartNoiseTest();
    engine.processAlike(Samples(150 * kBlock, 0));
    EXPECT_EQ(engine.MMIfNoiseTestIsRunning(), 1);
}

TEST_P(NoiseTest, IsShownAmongTheDiagnostics) {
    const int state = engine.diag("sent_state");
    EXPECT_STREQ(engine.SEDiagGetEnumAsString(state), "Idle");
    engine.MMIfStartNoiseTest();
    EXPECT_STREQ(engine.SEDiagGetEnumAsString(state), "Running");
    engine.process(noise(-40));
    EXPECT_STREQ(engine.SEDiagGetEnumAsString(state), "Done");
    const float* levels = engine.SEDiagGetFloat32Array(engine.diag("sent_levels_dbfs"));
    EXPECT_EQ(levels[6 * 12 + 5], engine.MMIfGetNoiseTestResults()->level_dbfs[12][5]);
}
