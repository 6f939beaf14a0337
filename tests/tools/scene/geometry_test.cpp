// In free field the delays between microphones follow from the geometry.
#include <gtest/gtest.h>

#include <cmath>

#include "tests/tools/scene/test_scenes.h"

namespace se_scene {
namespace {

// Path to microphone m less path to the centre, in samples; written independently of the sources on purpose.
double expectedLag(size_t m, double azimuth_deg, double distance_m, double radius_m) {
    const double talker = azimuth_deg * M_PI / 180;
    const double microphone = 60.0 * static_cast<double>(m - 1) * M_PI / 180;
    const double x = distance_m * std::cos(talker) - radius_m * std::cos(microphone);
    const double y = distance_m * std::sin(talker) - radius_m * std::sin(microphone);
    return (std::hypot(x, y) - distance_m) * 16000 / 343.0;
}

void expectLagsOf(const SceneOptions& options) {
    const Scene scene = makeScene(options);
    for (size_t m = 1; m < kMicrophones; ++m) {
        const double expected =
            expectedLag(m, options.talker_azimuth_deg, options.talker_distance_m, options.array_radius_m);
        EXPECT_NEAR(delayBetween(scene.talker[0], scene.talker[m], 5), expected, 0.02)
            << "microphone " << m << ", azimuth " << options.talker_azimuth_deg;
    }
}

class TalkerAzimuth : public testing::TestWithParam<double> {};

TEST_P(TalkerAzimuth, DecidesTheDelays) {
    SceneOptions options = talkerAlone(1);
    options.talker_azimuth_deg = GetParam();
    expectLagsOf(options);
}

INSTANTIATE_TEST_SUITE_P(OnAndBetweenTheSteps, TalkerAzimuth,
                         testing::Values(0, 30, 47.5, 90, 180, 213, 300));

TEST(SceneGeometry, ASmallerArrayHasSmallerDelays) {
    SceneOptions options = talkerAlone(1);
    options.array_radius_m = 0.035;
    expectLagsOf(options);
}

TEST(SceneGeometry, ACircleMayBeAnyArray) {
    SceneOptions options = talkerAlone(1);
    options.talker_distance_m = 10;
    options.talker_azimuth_deg = 90;
    options.circle.assign(6, {0.1, 0});
    options.circle[4] = {0.05, 90};
    const Scene scene = makeScene(options);
    EXPECT_NEAR(delayBetween(scene.talker[0], scene.talker[5], 5), -0.05 * 16000 / 343.0, 0.02);
    EXPECT_NEAR(delayBetween(scene.talker[0], scene.talker[1], 5), 0, 0.05);
}

TEST(SceneGeometry, ANearTalkerHasCurvedWaves) {
    SceneOptions options = talkerAlone(1);
    options.talker_distance_m = 0.25;
    options.talker_azimuth_deg = 30;
    expectLagsOf(options);
}

TEST(SceneGeometry, TheNearerMicrophoneIsLouder) {
    SceneOptions options = talkerAlone(1);
    options.talker_distance_m = 0.5;
    options.talker_azimuth_deg = 0;  // microphone 1 is nearest, microphone 4 farthest
    const Scene scene = makeScene(options);
    const double expected = 20 * std::log10((0.5 + 0.0425) / (0.5 - 0.0425));
    EXPECT_NEAR(ratioDb(scene.talker[1], scene.talker[4]), expected, 0.1);
}

}  // namespace
}  // namespace se_scene
