// The far end: what the loudspeaker plays, its echo at the microphones, and a loudspeaker that moves.
#include <gtest/gtest.h>

#include <cmath>

#include "tests/tools/scene/test_scenes.h"

namespace se_scene {
namespace {

constexpr double kCircleDelay = 0.0425 * kSampleRate / 343.0;  // samples from the centre to the circle

TEST(SceneEcho, WithoutEchoTheLoudspeakerPlaysNothing) {
    const Scene scene = makeScene(talkerAlone(1));
    EXPECT_EQ(scene.far_end, Row(scene.frames));
    EXPECT_EQ(scene.echo, MicrophoneRows(kMicrophones, Row(scene.frames)));
}

TEST(SceneEcho, ArrivesAfterTheLoudspeakersDistance) {
    const Scene scene = makeScene(echoAlone(2));
    const double expected = 0.3 * kSampleRate / 343.0;
    EXPECT_NEAR(delayBetween(scene.far_end, scene.echo[0], 40), expected, 0.02);
}

TEST(SceneEcho, ComesFromTheLoudspeakersDirection) {
    SceneOptions options = echoAlone(2);
    options.echo_azimuth_deg = 180;  // behind: microphone 4 first, microphone 1 last
    const Scene scene = makeScene(options);
    EXPECT_NEAR(delayBetween(scene.echo[0], scene.echo[4], 5), -kCircleDelay, 0.02);
    EXPECT_NEAR(delayBetween(scene.echo[0], scene.echo[1], 5), kCircleDelay, 0.02);
}

TEST(SceneEcho, IsTheGivenFarEndWhenThereIsOne) {
    SceneOptions options = echoAlone(0.5);
    options.far_end_speech = {0.5F, -0.25F};
    const Scene scene = makeScene(options);
    EXPECT_FLOAT_EQ(scene.far_end[1], -0.5F * scene.far_end[0]);
    EXPECT_FLOAT_EQ(scene.far_end[2], scene.far_end[0]);
}

TEST(SceneEcho, FarEndAndTalkerSpeakDifferently) {
    SceneOptions options = talkerAlone(3);
    options.echo_level_dbfs = -30;
    const Scene scene = makeScene(options);
    double sum = 0;
    for (size_t i = 0; i < scene.frames; ++i) {
        sum += static_cast<double>(scene.far_end[i]) * static_cast<double>(scene.talker[0][i]);
    }
    const double product = std::sqrt(powerOf(scene.far_end) * powerOf(scene.talker[0]));
    EXPECT_LT(std::abs(sum / static_cast<double>(scene.frames) / product), 0.1);
}

TEST(SceneEchoPathChange, LeavesWhatCameBeforeAlone) {
    SceneOptions options = echoAlone(4);
    const Scene steady = makeScene(options);
    options.echo_path_change_s = 2;
    const Scene changed = makeScene(options);
    EXPECT_EQ(excerpt(steady.echo[1], 0, 2), excerpt(changed.echo[1], 0, 2));
    EXPECT_NE(excerpt(steady.echo[1], 2, 4), excerpt(changed.echo[1], 2, 4));
    EXPECT_EQ(steady.far_end, changed.far_end);
}

TEST(SceneEchoPathChange, MovesTheLoudspeaker) {
    SceneOptions options = echoAlone(4);
    options.echo_azimuth_deg = 180;
    options.echo_azimuth_after_deg = 0;
    options.echo_path_change_s = 2;
    const Scene scene = makeScene(options);
    const auto delayOfFirst = [&scene](double from, double to) {
        return delayBetween(excerpt(scene.echo[0], from, to), excerpt(scene.echo[1], from, to), 5);
    };
    EXPECT_NEAR(delayOfFirst(0, 2), kCircleDelay, 0.05);
    EXPECT_NEAR(delayOfFirst(2.01, 4), -kCircleDelay, 0.05);
}

}  // namespace
}  // namespace se_scene
