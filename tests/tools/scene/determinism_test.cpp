// A scene depends on its options alone.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/tools/scene/test_scenes.h"
#include "tools/scene/random.h"
#include "tools/scene/voice.h"

namespace se_scene {
namespace {

using Parts = std::vector<std::string>;

// The parts that differ between a scene and the same scene with changed options.
template <class Change>
Parts changedBy(const Change& change) {
    SceneOptions options = fullScene(1);
    const Scene before = makeScene(options);
    change(options);
    const Scene after = makeScene(options);
    Parts changed;
    if (after.talker != before.talker) changed.emplace_back("talker");
    if (after.noise != before.noise) changed.emplace_back("noise");
    if (after.echo != before.echo) changed.emplace_back("echo");
    if (after.far_end != before.far_end) changed.emplace_back("far end");
    return changed;
}

TEST(SceneDeterminism, SameOptionsGiveTheSameScene) {
    EXPECT_EQ(changedBy([](SceneOptions&) {}), Parts{});
}

TEST(SceneDeterminism, AnotherSeedChangesEveryPart) {
    EXPECT_EQ(changedBy([](SceneOptions& options) { options.seed = 2; }),
              (Parts{"talker", "noise", "echo", "far end"}));
}

TEST(SceneDeterminism, NoiseOptionsChangeTheNoiseAlone) {
    const auto quieten = [](SceneOptions& options) {
        options.sensor_noise_dbfs = -30;
        options.diffuse_noise_dbfs = kSilent;
    };
    EXPECT_EQ(changedBy(quieten), Parts{"noise"});
}

TEST(SceneDeterminism, TalkerOptionsChangeTheTalkerAlone) {
    EXPECT_EQ(changedBy([](SceneOptions& options) { options.talker_azimuth_deg = 300; }), Parts{"talker"});
}

// The generator's output is fixed by the language; a change of these values changes every scene.
TEST(SceneDeterminism, RandomNumbersAreTheSameEverywhere) {
    Random random(1, Stream::kTalker);
    EXPECT_DOUBLE_EQ(random.uniform(), 0.32389707316178828);
    EXPECT_NEAR(random.gaussian(), 0.86149547553363126, 1e-12);
}

// In one expression the compiler would choose the order of two random numbers.
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
