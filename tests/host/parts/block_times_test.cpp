#include "host/health/block_times.h"

#include <gtest/gtest.h>

namespace se_host {
namespace {

TEST(BlockTimes, NothingWithoutBlocks) {
    EXPECT_EQ(BlockTimes().result().blocks, 0U);
}

TEST(BlockTimes, MeanPercentileAndWorst) {
    BlockTimes times;
    for (int i = 0; i < 9989; ++i) times.add(1000);
    for (int i = 0; i < 10; ++i) times.add(50'000);
    times.add(1'000'000);
    const BlockTimes::Result result = times.result();
    EXPECT_EQ(result.blocks, 10'000U);
    EXPECT_DOUBLE_EQ(result.mean, (9989 * 1000.0 + 10 * 50'000 + 1'000'000) / 10'000);
    EXPECT_GE(result.p999, 50'000);
    EXPECT_LE(result.p999, 50'000 * 17 / 16.0);
    EXPECT_EQ(result.worst, 1'000'000);
}

TEST(BlockTimes, AnyTimeHasAPlace) {
    for (const uint64_t ticks : {uint64_t{0}, uint64_t{1}, uint64_t{15}, uint64_t{16}, UINT64_MAX}) {
        BlockTimes times;
        times.add(ticks);
        EXPECT_EQ(times.result().worst, static_cast<double>(ticks));
        EXPECT_EQ(times.result().p999, static_cast<double>(ticks));
    }
}

}  // namespace
}  // namespace se_host
