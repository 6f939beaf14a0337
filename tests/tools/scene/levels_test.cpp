// Levels at the centre microphone equal the options.
#include <gtest/gtest.h>

#include "tests/tools/scene/test_scenes.h"

namespace se_scene {
namespace {

constexpr double kTolerance = 0.5;  // dB

TEST(SceneLevels, TalkerOverItsActiveTime) {
    SceneOptions options = talkerAlone(5);
    options.talker_level_dbfs = -32;
    EXPECT_NEAR(activeLevelDbfs(makeScene(options).talker[0]), -32, kTolerance);
}

TEST(SceneLevels, TalkerInARoom) {
    SceneOptions options = talkerAlone(5);
    options.reverberation_s = 0.3;
    EXPECT_NEAR(activeLevelDbfs(makeScene(options).talker[0]), -26, kTolerance);
}

TEST(SceneLevels, TalkerThatSpeaksForPartOfTheTime) {
    SceneOptions options = talkerAlone(5);
    options.talker_start_s = 2;
    options.talker_end_s = 4;
    const Row talker = makeScene(options).talker[0];
    EXPECT_NEAR(activeLevelDbfs(talker), -26, kTolerance);
    EXPECT_NEAR(activeLevelDbfs(excerpt(talker, 2, 4)), -26, kTolerance);
}

TEST(SceneLevels, SensorNoiseAtEveryMicrophone) {
    SceneOptions options = silentScene(2);
    options.sensor_noise_dbfs = -55;
    for (const Row& row : makeScene(options).noise) EXPECT_NEAR(levelDbfs(row), -55, kTolerance);
}

TEST(SceneLevels, DiffuseWhiteNoise) {
    SceneOptions options = silentScene(2);
    options.diffuse_noise_dbfs = -45;
    options.diffuse_noise_colour = NoiseColour::kWhite;
    EXPECT_NEAR(levelDbfs(makeScene(options).noise[0]), -45, kTolerance);
}

TEST(SceneLevels, DiffusePinkNoise) {
    SceneOptions options = silentScene(2);
    options.diffuse_noise_dbfs = -45;
    options.diffuse_noise_colour = NoiseColour::kPink;
    EXPECT_NEAR(levelDbfs(makeScene(options).noise[0]), -45, kTolerance);
}

TEST(SceneLevels, EchoAndFarEnd) {
    SceneOptions options = echoAlone(5);
    options.echo_level_dbfs = -35;
    options.far_end_level_dbfs = -20;
    const Scene scene = makeScene(options);
    EXPECT_NEAR(activeLevelDbfs(scene.echo[0]), -35, kTolerance);
    EXPECT_NEAR(activeLevelDbfs(scene.far_end), -20, kTolerance);
}

TEST(SceneLevels, SilentPartsAreZero) {
    const Scene scene = makeScene(silentScene(0.5));
    const MicrophoneRows silence(kMicrophones, Row(scene.frames));
    EXPECT_EQ(scene.talker, silence);
    EXPECT_EQ(scene.noise, silence);
    EXPECT_EQ(scene.echo, silence);
}

TEST(SceneLevels, AGivenSpeechOfSilenceStaysSilent) {
    SceneOptions options = talkerAlone(0.5);
    options.speech = Row(1000);
    EXPECT_EQ(levelDbfs(makeScene(options).talker[0]), kSilent);
}

}  // namespace
}  // namespace se_scene
