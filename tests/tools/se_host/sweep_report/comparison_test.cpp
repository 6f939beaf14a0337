// Tunings beside a reference, recording by recording.
#include "tools/se_host/sweep_report/comparison.h"

#include "tests/tools/se_host/sweep_report/known_results.h"

namespace se_host_test {
namespace {

using namespace se_host::report;

const std::vector<size_t> kAll{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};

TEST(Comparison, IsOfTheSameRecordings) {
    Results results = resultsOf({"noise_reduction_db"}, 2, 12);
    const Values before = noisyValues(12, 20, 5, 1);
    set(results, "noise_reduction_db", 0, before);
    set(results, "noise_reduction_db", 1, plus(before, 0.5));
    const std::vector<Comparison> comparisons = compareAll(results, 0, kAll);
    ASSERT_EQ(comparisons.size(), 1u);
    EXPECT_NEAR(comparisons[0].mean, 0.5, 1e-12) << "far less than the recordings differ";
    EXPECT_TRUE(comparisons[0].isClear());
    EXPECT_TRUE(comparisons[0].isGain());
    EXPECT_EQ(comparisons[0].gained, 1);
    EXPECT_EQ(comparisons[0].lost, 0);
}

TEST(Comparison, LeavesOutRecordingsThatLackAValue) {
    Results results = resultsOf({"noise_reduction_db"}, 2, 12);
    set(results, "noise_reduction_db", 0, Values(12, 10.0));
    set(results, "noise_reduction_db", 1, Values(12, 12.0));
    results.measures[0].values[0][3] = std::nullopt;
    results.measures[0].values[1][7] = std::nullopt;
    const std::vector<Comparison> comparisons = compareAll(results, 0, kAll);
    EXPECT_EQ(comparisons.at(0).pairs.size(), 10u);
    EXPECT_EQ(comparisons.at(0).mean, 2);
}

TEST(Comparison, WithoutAPairIsNone) {
    Results results = resultsOf({"noise_reduction_db"}, 2, 12);
    set(results, "noise_reduction_db", 0, Values(12, 10.0));
    EXPECT_TRUE(compareAll(results, 0, kAll).empty());
}

TEST(Comparison, OfAMeasureThatIsBetterWithLessGainsDownwards) {
    Results results = resultsOf({"convergence_seconds"}, 2, 12);
    const Values before = noisyValues(12, 3, 0.5, 1);
    set(results, "convergence_seconds", 0, before);
    set(results, "convergence_seconds", 1, plus(before, -1));
    const Comparison comparison = compareAll(results, 0, kAll).at(0);
    EXPECT_NEAR(comparison.mean, -1, 1e-12);
    EXPECT_TRUE(comparison.isGain());
    EXPECT_EQ(comparison.gained, 1);
}

TEST(Comparison, OfFewRecordingsIsNeverClear) {
    Results results = resultsOf({"noise_reduction_db"}, 2, 12);
    set(results, "noise_reduction_db", 0, Values(12, 10.0));
    set(results, "noise_reduction_db", 1, Values(12, 12.0));
    EXPECT_FALSE(compareAll(results, 0, {0, 1, 2, 3, 4, 5, 6, 7, 8}).at(0).isClear());
    EXPECT_TRUE(compareAll(results, 0, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9}).at(0).isClear());
}

TEST(Comparison, LeavesAnglesOut) {
    Results results = resultsOf({"talker_mean_azimuth_degrees"}, 2, 12);
    set(results, "talker_mean_azimuth_degrees", 0, Values(12, 350.0));
    set(results, "talker_mean_azimuth_degrees", 1, Values(12, 10.0));
    EXPECT_TRUE(compareAll(results, 0, kAll).empty());
}

TEST(Comparison, NamesTheRecordingsThatGainedAndLostMost) {
    Results results = resultsOf({"noise_reduction_db"}, 2, 5);
    set(results, "noise_reduction_db", 0, {1.0, 1.0, 1.0, 1.0, 1.0});
    set(results, "noise_reduction_db", 1, {1.5, 0.0, 4.0, 1.0, 3.0});
    const Comparison comparison = compareAll(results, 0, {0, 1, 2, 3, 4}).at(0);
    const std::vector<Pair> gained = mostGained(comparison, 2), lost = mostLost(comparison, 2);
    ASSERT_EQ(gained.size(), 2u);
    EXPECT_EQ(gained[0].recording, 2u);
    EXPECT_EQ(gained[1].recording, 4u);
    ASSERT_EQ(lost.size(), 1u) << "one that is the same has not lost";
    EXPECT_EQ(lost[0].recording, 1u);
}

TEST(Comparison, IsCorrectedForTheOthers) {
    Results results = resultsOf({"noise_reduction_db"}, 4, 12);
    const Values before = noisyValues(12, 20, 5, 1);
    set(results, "noise_reduction_db", 0, before);
    for (size_t tuning = 1; tuning < 4; ++tuning) {
        Values values = noisyValues(12, tuning == 1 ? 0.6 : 0.1, 0.7, static_cast<unsigned>(tuning));
        for (size_t i = 0; i < 12; ++i) *values[i] += *before[i];
        set(results, "noise_reduction_db", tuning, values);
    }
    std::vector<Comparison> alone = compareAll(results, 0, kAll), together = alone;
    correctTogether({&alone[0]});
    correctTogether({&together[0], &together[1], &together[2]});
    EXPECT_LT(alone[0].by_chance, together[0].by_chance);
}

}  // namespace
}  // namespace se_host_test
