// The way of the far end to the loudspeaker: delay, jump, drift, clipping.
#include "tools/scene/playback.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "tests/tools/scene/test_scenes.h"

namespace se_scene {
namespace {

constexpr int kLongest = 6000;  // samples

TEST(ScenePlayback, IsTheFarEndUnlessSomethingHappens) {
    const SceneOptions options = echoAlone(1);
    const Row far_end = makeScene(options).far_end;
    EXPECT_EQ(played(far_end, options), far_end);
}

TEST(ScenePlayback, IsLateByWholeAndFractionsOfSamples) {
    for (const double delay_ms : {0.75, 10.0, 123.456, 300.0}) {
        SceneOptions options = echoAlone(3);
        const Row far_end = makeScene(options).far_end;
        options.echo_delay_ms = delay_ms;
        EXPECT_NEAR(delayBetween(far_end, played(far_end, options), kLongest), delay_ms * 16, 0.05);
    }
}

TEST(ScenePlayback, JumpsAtItsTime) {
    SceneOptions options = echoAlone(4);
    const Row far_end = makeScene(options).far_end;
    options.echo_delay_ms = 50;
    options.echo_jump_s = 2;
    options.echo_jump_ms = -20;
    const Row sound = played(far_end, options);
    EXPECT_NEAR(delayBetween(excerpt(far_end, 0, 1.9), excerpt(sound, 0, 1.9), kLongest), 800, 0.05);
    EXPECT_NEAR(delayBetween(excerpt(far_end, 2, 4), excerpt(sound, 2, 4), kLongest), 480, 0.05);
}

TEST(ScenePlayback, JumpsBackAtItsTime) {
    SceneOptions options = echoAlone(4);
    const Row far_end = makeScene(options).far_end;
    options.echo_jump_s = 1;
    options.echo_jump_ms = 100;
    options.echo_jump_back_s = 2.5;
    const Row sound = played(far_end, options);
    EXPECT_NEAR(delayBetween(excerpt(far_end, 1, 2.5), excerpt(sound, 1, 2.5), kLongest), 1600, 0.05);
    EXPECT_EQ(excerpt(sound, 2.5, 4), excerpt(far_end, 2.5, 4));
}

TEST(ScenePlayback, GetsLaterWithASlowerClock) {
    SceneOptions options = echoAlone(10);
    const Row far_end = makeScene(options).far_end;
    options.echo_drift_ppm = 200;
    const Row sound = played(far_end, options);
    const double early = delayBetween(excerpt(far_end, 0, 1), excerpt(sound, 0, 1), 100);
    const double late = delayBetween(excerpt(far_end, 9, 10), excerpt(sound, 9, 10), 100);
    EXPECT_NEAR(late - early, 9 * 16000 * 200e-6, 3);
}

TEST(ScenePlayback, ClipsAtTheLimit) {
    SceneOptions options = echoAlone(2);
    const Row far_end = makeScene(options).far_end;
    options.loudspeaker_limit_dbfs = -20;
    const Row sound = played(far_end, options);
    EXPECT_FLOAT_EQ(*std::max_element(sound.begin(), sound.end()), 0.1F);
    EXPECT_FLOAT_EQ(*std::min_element(sound.begin(), sound.end()), -0.1F);
}

}  // namespace
}  // namespace se_scene
