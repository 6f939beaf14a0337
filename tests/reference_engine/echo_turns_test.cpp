// Which partitions learn and which one is constrained, frame by frame.
#include "reference_engine/audio/echo/echo_turns.h"

#include <gtest/gtest.h>

using namespace reference_engine;

namespace {

constexpr int kManyFrames = 600;

}  // namespace

TEST(EchoTurns, AllLearnFromEachFrameWhereTheyAreTo) {
    EchoTurns turns;
    for (int b = 0; b < kManyFrames; ++b) {
        turns.advance(true);
        EXPECT_TRUE(turns.learning().all()) << b;
    }
}

TEST(EchoTurns, ElseEachLearnsEquallyOftenAsItsNeighbours) {
    EchoTurns turns;
    int frames[kPartitions] = {};
    for (int b = 0; b < kManyFrames; ++b) {
        turns.advance(false);
        for (size_t p = 0; p < kPartitions; ++p) frames[p] += turns.learning()[p] ? 1 : 0;
    }
    EXPECT_EQ(frames[0], kManyFrames);
    EXPECT_LT(frames[kPartitions - 1], kManyFrames);
    for (int p = kPartitions / 2; p < kPartitions; ++p) EXPECT_EQ(frames[p], frames[kPartitions - 1]) << p;
}

// Its taps are used in the time domain.
TEST(EchoTurns, TheFirstPartitionIsConstrainedEverySecondTimeAndTheOthersInTurn) {
    EchoTurns turns;
    int times[kPartitions] = {};
    for (int b = 0; b < kManyFrames; ++b) {
        const bool first_before = turns.constrained() == 0;
        turns.advance(b % 3 == 0);
        EXPECT_NE(turns.constrained() == 0, first_before) << b;
        ++times[turns.constrained()];
    }
    for (int p = 1; p < kPartitions; ++p) EXPECT_EQ(times[p], kManyFrames / 2 / (kPartitions - 1)) << p;
}

TEST(EchoTurns, TheConstrainedPartitionLearnsAtOnce) {
    EchoTurns turns;
    for (int b = 0; b < kManyFrames; ++b) {
        turns.advance(b > kManyFrames / 2);
        EXPECT_EQ(turns.now().count(), 1U);
        EXPECT_TRUE(turns.now()[static_cast<size_t>(turns.constrained())]);
    }
}
