// Mean, 99th percentile and longest of the blocks' times.
#include "tools/se_host/engine/block_times.h"

#include <gtest/gtest.h>

namespace se_host {
namespace {

TEST(BlockTimes, OfNoBlockAreZero) {
    EXPECT_EQ(blockTimesOf({}).longest, 0);
}

TEST(BlockTimes, OfOneBlockAreItsOwn) {
    const BlockTimes times = blockTimesOf({3});
    EXPECT_EQ(times.mean, 3);
    EXPECT_EQ(times.percentile_99, 3);
    EXPECT_EQ(times.longest, 3);
}

TEST(BlockTimes, OfAHundredLeaveTheLongestOut) {
    std::vector<double> seconds(100, 1);
    seconds[40] = 11;
    const BlockTimes times = blockTimesOf(seconds);
    EXPECT_DOUBLE_EQ(times.mean, 1.1);
    EXPECT_EQ(times.percentile_99, 1);
    EXPECT_EQ(times.longest, 11);
}

TEST(BlockTimes, OfTwoHundredLeaveTwoOut) {
    std::vector<double> seconds(200, 1);
    seconds[0] = seconds[1] = seconds[2] = 5;
    EXPECT_EQ(blockTimesOf(seconds).percentile_99, 5);
    seconds[0] = 1;
    EXPECT_EQ(blockTimesOf(seconds).percentile_99, 1);
}

}  // namespace
}  // namespace se_host
