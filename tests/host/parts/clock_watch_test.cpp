#include "host/health/clock_watch.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>

namespace se_host {
namespace {

constexpr int64_t kSecond = 1'000'000'000;

// Calls of 160 frames whose clock runs by `ppm` faster than the sound, with jitter; every `lost_every`th call is lost.
void run(ClockWatch& watch, double ppm, int64_t jitter, int lost_every, int calls = 6000) {
    std::mt19937 random(1);
    std::uniform_int_distribution<int64_t> late(0, jitter);
    uint64_t frames = 0;
    for (int call = 0; call < calls; ++call) {
        if (lost_every > 0 && call % lost_every == lost_every / 2) continue;
        const auto time = static_cast<int64_t>(call * 1e7 * (1 + ppm * 1e-6)) + late(random);
        watch.call(static_cast<uint64_t>(7 * kSecond + time), frames);
        frames += 160;
    }
}

TEST(ClockWatch, IsUsedFromTheFirstCallOn) {
    ClockWatch watch;
    EXPECT_FALSE(watch.isUsed());
    watch.call(1, 0);
    EXPECT_TRUE(watch.isUsed());
}

TEST(ClockWatch, SteadyCallsMissNothing) {
    for (const double ppm : {-300.0, 0.0, 300.0}) {
        for (const int64_t jitter : {int64_t{0}, kSecond / 100}) {
            ClockWatch watch;
            run(watch, ppm, jitter, 0);
            EXPECT_EQ(watch.missing(), 0U) << ppm << " " << jitter;
            EXPECT_EQ(watch.late(), 0U);
        }
    }
}

TEST(ClockWatch, CountsWhatWasLost) {
    ClockWatch watch;
    run(watch, 100, 0, 1000);  // 6 calls of 160 frames
    EXPECT_NEAR(static_cast<double>(watch.missing()), 960, 30);
}

TEST(ClockWatch, ALateCallIsNoLoss) {
    ClockWatch watch;
    for (int call = 0; call < 500; ++call) {
        const int64_t late = call == 250 ? kSecond / 20 : 0;
        watch.call(static_cast<uint64_t>(call * kSecond / 100 + late), static_cast<uint64_t>(call) * 160);
    }
    EXPECT_EQ(watch.missing(), 0U);
    EXPECT_EQ(watch.late(), 1U);
}

}  // namespace
}  // namespace se_host
