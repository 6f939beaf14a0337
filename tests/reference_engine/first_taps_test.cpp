// The echo of the newest blocks: the convolution of their samples with the first taps of each path.
#include "reference_engine/audio/echo/first_taps.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>

#include "reference_engine/engine_interface.h"
#include "reference_engine/routines/routines.h"

using namespace reference_engine;

// The hook variable of the engine.
AecConvolutionRoutine* AecConvolution = plain::aecConvolution;

namespace {

class FirstTapsTest : public testing::Test {
  protected:
    FirstTapsTest() { taps_.init(); }

    // Of sample i of the far end.
    float echoBySum(const float (&taps)[kPartition], int i, float factor) const {
        double sum = 0;
        for (int n = 0; n <= i; ++n) {
            sum += static_cast<double>(taps[n]) * static_cast<double>(factor) * far_end_[i - n];
        }
        return static_cast<float>(sum);
    }

    void expectEchoOfNoise(const float (&taps)[kPartition], int blocks) {
        for (int16_t& sample : far_end_) sample = static_cast<int16_t>(random_() % 16384 - 8192);
        for (Lanes& sample : echo_) sample = Lanes{} + 1000;
        taps_.addEcho(far_end_, blocks, echo_);
        for (int i = 0; i < kBlock; ++i) {
            for (int m = 0; m < kLanes; ++m) {
                const float factor = 1 / static_cast<float>(1 << m);
                const float expected = 1000 + echoBySum(taps, (blocks - 1) * kBlock + i, factor);
                EXPECT_NEAR(echo_[i][m], expected, 6) << blocks << ' ' << i << ' ' << m;
            }
        }
    }

    // A lane has half the taps of the one before.
    void set(const float (&taps)[kPartition]) {
        Lanes all[kPartition];
        for (int n = 0; n < kPartition; ++n) {
            for (int m = 0; m < kLanes; ++m) all[n][m] = taps[n] / static_cast<float>(1 << m);
        }
        taps_.set(all);
    }

    FirstTaps taps_;
    int16_t far_end_[kPartition] = {};
    Lanes echo_[kBlock] = {};
    std::mt19937 random_{1};
};

}  // namespace

TEST_F(FirstTapsTest, AddTheEchoOfTheNewestBlocksAlone) {
    float taps[kPartition];
    std::uniform_real_distribution<float> tap(-0.05F, 0.05F);
    for (float& value : taps) value = tap(random_);
    set(taps);
    for (const int blocks : {1, 2, 1, 1, 2, 2}) expectEchoOfNoise(taps, blocks);
}

// Loud taps and a loud block: no sum of 32 bits wraps.
TEST_F(FirstTapsTest, DoNotWrapAtFullScale) {
    float taps[kPartition];
    for (int n = 0; n < kPartition; ++n) taps[n] = n % 2 == 0 ? 2.0F : -2.0F;
    set(taps);
    for (int i = 0; i < kPartition; ++i) far_end_[i] = i % 2 == 0 ? 32767 : -32768;
    taps_.addEcho(far_end_, 2, echo_);
    for (int i = 0; i < kBlock; ++i) {
        const float expected = echoBySum(taps, kBlock + i, 1);
        EXPECT_NEAR(echo_[i][0], expected, 1e-3F * std::abs(expected));
    }
}

TEST_F(FirstTapsTest, LeaveTheEchoAsItIsWithoutTaps) {
    far_end_[0] = 32767;
    echo_[7][2] = 5;
    taps_.addEcho(far_end_, 1, echo_);
    EXPECT_EQ(echo_[7][2], 5);
    EXPECT_EQ(echo_[0][0], 0);
}
