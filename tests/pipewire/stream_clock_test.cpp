// A pause of the streams must not look like lost frames.
#include "pipewire/stream_clock.h"

#include <gtest/gtest.h>

namespace se_pipewire {
namespace {

constexpr uint64_t kBlock = 10000000;  // nanoseconds

TEST(PipeWireStreamClock, BeginsAtZeroAndFollowsTheTime) {
    StreamClock clock;
    EXPECT_EQ(clock.at(7 * kBlock, 160), 0U);
    EXPECT_EQ(clock.at(8 * kBlock, 160), kBlock);
    EXPECT_EQ(clock.at(11 * kBlock, 160), 4 * kBlock);
}

TEST(PipeWireStreamClock, GoesOnAfterAPauseWhereTheFramesEnded) {
    StreamClock clock;
    clock.at(7 * kBlock, 160);
    clock.pause();
    EXPECT_EQ(clock.at(1000 * kBlock, 160), kBlock);
    EXPECT_EQ(clock.at(1001 * kBlock, 160), 2 * kBlock);
}

}  // namespace
}  // namespace se_pipewire
