#include "host/audio/samples.h"

#include <gtest/gtest.h>

#include <limits>

namespace se_host {
namespace {

struct Conversion {
    float in;
    int16_t out;
};

TEST(Samples, FloatsAreRoundedAndLimited) {
    constexpr float kStep = 1.0f / 32768;
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    for (const Conversion& c : {Conversion{0, 0},
                                {0.5f, 16384},
                                {-1, -32768},
                                {1, 32767},
                                {2, 32767},
                                {-2, -32768},
                                {0.5f * kStep, 1},
                                {-0.5f * kStep, -1},
                                {0.49f * kStep, 0},
                                {1.5f * kStep, 2},
                                {-1.5f * kStep, -2},
                                {32766.5f * kStep, 32767},
                                {-32767.5f * kStep, -32768},
                                {kInfinity, 32767},
                                {-kInfinity, -32768},
                                {std::numeric_limits<float>::quiet_NaN(), 0},
                                {1e-40f, 0}}) {
        EXPECT_EQ(toEngine(c.in), c.out) << c.in;
    }
}

TEST(Samples, EveryInt16ComesBack) {
    for (int sample = INT16_MIN; sample <= INT16_MAX; ++sample) {
        float out = 2;
        fromEngine(static_cast<int16_t>(sample), out);
        ASSERT_EQ(toEngine(out), sample);
    }
}

}  // namespace
}  // namespace se_host
