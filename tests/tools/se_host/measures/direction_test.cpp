// The direction in which the engine looks.
#include <cmath>

#include "tests/tools/se_host/measures/known_run.h"

namespace se_host_test {
namespace {

// Looks at these locations in turn, a block each.
KnownRun looking(const std::vector<se_host::Direction>& directions) {
    KnownRun run(sine(kSecond, -20), sine(kSecond, -20));
    for (size_t block = 0; block < 100; ++block) {
        run.processed.directions.push_back(directions[block % directions.size()]);
    }
    return run;
}

TEST(MeasuredDirection, ThatDoesNotMoveIsSteady) {
    const KnownRun run = looking({{2, 20000}});
    EXPECT_EQ(run.value("talker_mean_azimuth_degrees"), 60);
    EXPECT_EQ(run.value("talker_deviation_degrees"), 0);
}

TEST(MeasuredDirection, ThatJumpsBetweenTwoHasTheMiddleAndTheKnownDeviation) {
    const KnownRun run = looking({{1, 20000}, {3, 20000}});  // 30 and 90 degrees
    EXPECT_NEAR(*run.value("talker_mean_azimuth_degrees"), 60, 1e-4);
    const double expected = std::sqrt(2 * (1 - std::cos(M_PI / 6))) * 180 / M_PI;
    EXPECT_NEAR(*run.value("talker_deviation_degrees"), expected, 1e-4);
}

TEST(MeasuredDirection, AroundNorthIsNotOnTheOtherSide) {
    EXPECT_EQ(looking({{11, 20000}, {1, 20000}}).value("talker_mean_azimuth_degrees"), 0);
    EXPECT_NEAR(*looking({{11, 20000}, {0, 20000}}).value("talker_mean_azimuth_degrees"), 345, 1e-4);
}

TEST(MeasuredDirection, CountsByItsConfidence) {
    EXPECT_NEAR(*looking({{0, 32767}, {3, 100}}).value("talker_mean_azimuth_degrees"), 0.2, 0.1);
}

TEST(MeasuredDirection, OfTwoOppositeOnesIsNotTold) {
    EXPECT_FALSE(looking({{0, 20000}, {6, 20000}}).value("talker_mean_azimuth_degrees"));
    EXPECT_NEAR(*looking({{0, 20000}, {6, 20000}}).value("talker_deviation_degrees"), 81.03, 0.01);
}

TEST(MeasuredDirection, WithoutConfidenceIsNothing) {
    EXPECT_FALSE(looking({{4, 10}}).value("talker_mean_azimuth_degrees"));
    EXPECT_FALSE(looking({{4, 10}}).value("talker_deviation_degrees"));
    KnownRun bypassed(sine(kSecond, -20), sine(kSecond, -20));
    EXPECT_FALSE(bypassed.value("talker_mean_azimuth_degrees"));
}

}  // namespace
}  // namespace se_host_test
