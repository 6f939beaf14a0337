// The options alone decide a scene.
#include <gtest/gtest.h>

#include "tests/tools/scene/test_scenes.h"
#include "tools/scene/random.h"
#include "tools/scene/voice.h"

namespace se_scene {
namespace {

TEST(SceneDeterminism, SameOptionsGiveTheSameScene) {
    const Scene first = makeScene(fullScene(1));
    const Scene second = makeScene(fullScene(1));
    EXPECT_EQ(first.talker, second.talker);
    EXPECT_EQ(first.noise, second.noise);
    EXPECT_EQ(first.echo, second.echo);
    EXPECT_EQ(first.far_end, second.far_end);
}

TEST(SceneDeterminism, AnotherSeedChangesEveryPart) {
    SceneOptions options = fullScene(1);
    const Scene first = makeScene(options);
    options.seed = 2;
    const Scene second = makeScene(options);
    EXPECT_NE(first.talker, second.talker);
    EXPECT_NE(first.noise, second.noise);
    EXPECT_NE(first.echo, second.echo);
    EXPECT_NE(first.far_end, second.far_end);
}

TEST(SceneDeterminism, NoiseOptionsLeaveTalkerAndEchoAlone) {
    SceneOptions options = fullScene(1);
    const Scene first = makeScene(options);
    options.sensor_noise_dbfs = -30;
    options.diffuse_noise_dbfs = kSilent;
    const Scene second = makeScene(options);
    EXPECT_NE(first.noise, second.noise);
    EXPECT_EQ(first.talker, second.talker);
    EXPECT_EQ(first.echo, second.echo);
}

TEST(SceneDeterminism, TalkerOptionsLeaveNoiseAndEchoAlone) {
    SceneOptions options = fullScene(1);
    const Scene first = makeScene(options);
    options.talker_azimuth_deg = 300;
    const Scene second = makeScene(options);
    EXPECT_NE(first.talker, second.talker);
    EXPECT_EQ(first.noise, second.noise);
    EXPECT_EQ(first.echo, second.echo);
}

// The generator's output is fixed by the language; a change of these values changes every scene.
TEST(SceneDeterminism, RandomNumbersAreTheSameEverywhere) {
    Random random(1, Stream::kTalker);
    EXPECT_DOUBLE_EQ(random.uniform(), 0.32389707316178828);
    EXPECT_NEAR(random.gaussian(), 0.86149547553363126, 1e-12);
}

// Two random numbers drawn in one expression would come in an order of the compiler's choice.
TEST(SceneDeterminism, TheVoiceIsTheSameWithEveryCompiler) {
    Random random(1, Stream::kTalker);
    const Row speech = synthesiseSpeech(kTalkerVoice, 48001, random);
    EXPECT_NEAR(speech[1000], 0.0172371473, 1e-6);
    EXPECT_NEAR(speech[16000], 0.0266010407, 1e-6);
    EXPECT_NEAR(speech[40000], 0.106615312, 1e-6);
    EXPECT_NEAR(speech[48000], 0.0313371718, 1e-6);
}

}  // namespace
}  // namespace se_scene
