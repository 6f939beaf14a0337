// Which partitions learn and which one is constrained, block by block.
#include "reference_engine/audio/echo/echo_turns.h"

#include <gtest/gtest.h>

using namespace reference_engine;

namespace {

constexpr int kManyBlocks = 600;

}  // namespace

TEST(EchoTurns, AllLearnInEachBlockWhileThePathsAreNotKnown) {
    EchoTurns turns;
    for (int b = 0; b < kManyBlocks; ++b) {
        turns.advance(false);
        EXPECT_TRUE(turns.learning().all()) << b;
    }
}

TEST(EchoTurns, EachLearnsEquallyOftenAsItsNeighboursOnceThePathsAreKnown) {
    EchoTurns turns;
    int blocks[kPartitions] = {};
    for (int b = 0; b < kManyBlocks; ++b) {
        turns.advance(true);
        for (size_t p = 0; p < kPartitions; ++p) blocks[p] += turns.learning()[p] ? 1 : 0;
    }
    EXPECT_EQ(blocks[0], kManyBlocks);
    EXPECT_LT(blocks[kPartitions - 1], kManyBlocks);
    for (int p = kPartitions / 2; p < kPartitions; ++p) EXPECT_EQ(blocks[p], blocks[kPartitions - 1]) << p;
}

// Its taps are used in the time domain.
TEST(EchoTurns, TheFirstPartitionIsConstrainedEverySecondTimeAndTheOthersInTurn) {
    EchoTurns turns;
    int times[kPartitions] = {};
    for (int b = 0; b < kManyBlocks; ++b) {
        const bool first_before = turns.constrained() == 0;
        turns.advance(true);
        EXPECT_NE(turns.constrained() == 0, first_before) << b;
        ++times[turns.constrained()];
    }
    for (int p = 1; p < kPartitions; ++p) EXPECT_EQ(times[p], kManyBlocks / 2 / (kPartitions - 1)) << p;
}

TEST(EchoTurns, TheConstrainedPartitionLearnsWithinTheBlock) {
    EchoTurns turns;
    for (int b = 0; b < kManyBlocks; ++b) {
        turns.advance(b > kManyBlocks / 2);
        EXPECT_EQ(turns.now().count(), 1U);
        EXPECT_TRUE(turns.now()[static_cast<size_t>(turns.constrained())]);
    }
}
