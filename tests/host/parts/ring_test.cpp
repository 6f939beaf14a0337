#include "host/live/ring.h"

#include <gtest/gtest.h>

#include <thread>

namespace se_host {
namespace {

TEST(Ring, KeepsTheOrderAndItsBound) {
    Ring<int, 4> ring;
    int item = -1;
    EXPECT_FALSE(ring.pop(&item));
    for (int round = 0; round < 3; ++round) {
        for (int i = 0; i < 4; ++i) EXPECT_TRUE(ring.push(10 * round + i));
        EXPECT_FALSE(ring.push(99));
        for (int i = 0; i < 4; ++i) {
            ASSERT_TRUE(ring.pop(&item));
            EXPECT_EQ(item, 10 * round + i);
        }
        EXPECT_FALSE(ring.pop(&item));
    }
}

TEST(Ring, HandsEverythingFromOneThreadToAnother) {
    constexpr int kItems = 100'000;
    Ring<int, 8> ring;
    std::thread writer([&] {
        for (int i = 0; i < kItems; ++i) {
            while (!ring.push(i)) std::this_thread::yield();
        }
    });
    for (int i = 0; i < kItems; ++i) {
        int item = -1;
        while (!ring.pop(&item)) std::this_thread::yield();
        ASSERT_EQ(item, i);
    }
    writer.join();
}

}  // namespace
}  // namespace se_host
