// Which figures count as reached, which system is ahead, and which blocks' times are compared.
#include "bench/engine_vs_peer/report.h"
#include "bench/engine_vs_peer/report_table.h"

#include <gtest/gtest.h>

using namespace engine_vs_peer;

namespace {

FigureRow rowOf(const Target& target, const std::vector<double>& engine, const std::vector<double>& peer) {
    return {"scene", {"figure", "dB", target, {}}, {engine, peer}};
}

bool reached(const Target& target, const std::vector<double>& engine, const std::vector<double>& peer) {
    return isReached(rowOf(target, engine, peer));
}

// A scene whose blocks take these times.
Recording recordingOf(double echo_dbfs, const std::vector<double>& engine, const std::vector<double>& peer) {
    Recording recording = {};
    recording.options.echo_level_dbfs = echo_dbfs;
    recording.outputs.microseconds[kEngine] = engine;
    recording.outputs.microseconds[kPeer] = peer;
    return recording;
}

void addScene(uint32_t seed, Recording recording, Report* report) {
    Trial trial;
    trial.measure = [](const std::vector<Recording>&) { return std::vector<Figure>(); };
    std::vector<Recording> recordings;
    recordings.push_back(std::move(recording));
    add(trial, seed, recordings, *report);
}

}  // namespace

TEST(ReachedFigure, IsAMeanAtOrBeyondItsBound) {
    EXPECT_TRUE(reached({Aim::kAtLeast, 4}, {3, 5}, {9, 9}));
    EXPECT_FALSE(reached({Aim::kAtLeast, 4}, {3, 4.9}, {0, 0}));
    EXPECT_TRUE(reached({Aim::kAtMost, 4}, {3, 5}, {0, 0}));
    EXPECT_FALSE(reached({Aim::kAtMost, 4}, {3, 5.1}, {9, 9}));
}

// A talker too loud and one too quiet are not one at the right level.
TEST(ReachedFigure, WithinABoundCountsMagnitudes) {
    EXPECT_TRUE(reached({Aim::kWithin, 3}, {-3, 3}, {0, 0}));
    EXPECT_FALSE(reached({Aim::kWithin, 3}, {-4, 4}, {0, 0}));
}

TEST(ReachedFigure, NotBelowThePeerIsComparedWithThePeer) {
    EXPECT_TRUE(reached({Aim::kNotBelowPeer}, {0.8, 0.9}, {0.9, 0.8}));
    EXPECT_FALSE(reached({Aim::kNotBelowPeer}, {0.8, 0.89}, {0.9, 0.8}));
}

TEST(ReachedFigure, OfTimesThePeerIsAtMostThatShareOfThePeers) {
    EXPECT_TRUE(reached({Aim::kTimesPeer, 0.5}, {40, 60}, {100, 100}));
    EXPECT_FALSE(reached({Aim::kTimesPeer, 0.5}, {40, 61}, {100, 100}));
}

TEST(AheadIn, NamesASystemOnlyIfTheIntervalOfTheDifferenceDoesNotContainZero) {
    EXPECT_STREQ(aheadIn(rowOf({Aim::kAtLeast}, {5, 6, 7}, {1, 2, 3.1})), "engine");
    EXPECT_STREQ(aheadIn(rowOf({Aim::kAtMost}, {5, 6, 7}, {1, 2, 3.1})), "peer");
    EXPECT_STREQ(aheadIn(rowOf({Aim::kTimesPeer, 0.8}, {1, 2, 3.1}, {5, 6, 7})), "engine");
    EXPECT_STREQ(aheadIn(rowOf({Aim::kAtLeast}, {5, 6, 1}, {1, 2, 9})), "");
    EXPECT_STREQ(aheadIn(rowOf({Aim::kAtLeast}, {5}, {1})), "");
}

// Where only the talker speaks, both systems do less: no cancelling.
TEST(TimesWithFarEnd, AreEachSeedsOverAllItsScenesWithAFarEnd) {
    Report report;
    addScene(1, recordingOf(-20, {1, 2}, {10, 20}), &report);
    addScene(1, recordingOf(-20, {3}, {30}), &report);
    addScene(1, recordingOf(se_scene::kSilent, {1000}, {1000}), &report);
    addScene(2, recordingOf(-20, {5}, {50}), &report);
    const std::vector<FigureRow> rows = timesWithFarEnd(report);
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0].of_seed[kEngine], (std::vector<double>{2, 5}));
    EXPECT_EQ(rows[0].of_seed[kPeer], (std::vector<double>{20, 50}));
    EXPECT_EQ(rows[1].of_seed[kEngine], (std::vector<double>{3, 5}));
    EXPECT_TRUE(hasTarget(rows[0]));
    EXPECT_FALSE(hasTarget(rows[1]));
}

TEST(TimesWithFarEnd, AreNoneWithoutAFarEnd) {
    Report report;
    addScene(1, recordingOf(se_scene::kSilent, {1}, {1}), &report);
    EXPECT_TRUE(timesWithFarEnd(report).empty());
}

// The blocks of a recording without a far end take a third of the time: a call in which it seldom speaks is no fault.
TEST(WorstBlock, IsComparedWithTheMedianOfItsKind) {
    Report report;
    addScene(1, recordingOf(-20, {90, 100, 299}, {1, 1, 2}), &report);
    addScene(1, recordingOf(se_scene::kSilent, {20, 30, 91}, {1, 1, 2}), &report);
    const std::vector<Cells> table = cellsOf(report);
    ASSERT_EQ(table.size(), 4u);
    EXPECT_EQ(table[2], (Cells{"the far end speaks", "worst block of 0 min", "299 µs", "2 µs", "peer",
                               "3 times their median, 100 µs", "reached"}));
    EXPECT_EQ(table[3], (Cells{"no far end", "worst block of 0 min", "91 µs", "2 µs", "peer",
                               "3 times their median, 30 µs", "not reached"}));
}
