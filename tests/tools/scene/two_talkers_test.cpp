// Two talkers in turn, a talker that walks, and the direct sound.
#include <gtest/gtest.h>

#include "tests/tools/scene/test_scenes.h"

namespace se_scene {
namespace {

SceneOptions twoTalkers() {
    SceneOptions options = talkerAlone(7);
    options.talker_start_s = 1;
    options.second_talker_azimuth_deg = 180;
    options.turn_s = 2;
    return options;
}

SceneOptions walking() {
    SceneOptions options = talkerAlone(6);
    options.talker_azimuth_deg = 0;
    options.walk_start_s = 2;
    options.walk_s = 2;
    options.walk_deg = 180;
    return options;
}

// Above 0: it arrives at microphone 1 (azimuth 0) before microphone 4 (180).
double leadOfAzimuth0(const Scene& scene, double begin_s, double end_s) {
    return delayBetween(excerpt(scene.talker[1], begin_s, end_s), excerpt(scene.talker[4], begin_s, end_s),
                        8);
}

constexpr double kAcross = 2 * 0.0425 * 16000 / 343.0;  // samples

TEST(SceneTwoTalkers, SpeakInTurn) {
    SceneOptions options = twoTalkers();
    options.talker_azimuth_deg = 0;
    const Scene scene = makeScene(options);
    EXPECT_EQ(powerOf(excerpt(scene.talker[0], 0, 1)), 0);
    EXPECT_NEAR(leadOfAzimuth0(scene, 1.1, 2.9), kAcross, 0.1);
    EXPECT_NEAR(leadOfAzimuth0(scene, 3.1, 4.9), -kAcross, 0.1);
    EXPECT_NEAR(leadOfAzimuth0(scene, 5.1, 6.9), kAcross, 0.1);
}

TEST(SceneTwoTalkers, AreEquallyLoud) {
    SceneOptions options = twoTalkers();
    const Row sound = makeScene(options).talker[0];
    Row first = excerpt(sound, 1, 3), again = excerpt(sound, 5, 7);
    first.insert(first.end(), again.begin(), again.end());
    EXPECT_NEAR(activeLevelDbfs(first), -26, 0.5);
    EXPECT_NEAR(activeLevelDbfs(excerpt(sound, 3, 5)), -26, 0.5);
}

TEST(SceneTwoTalkers, HaveDifferentVoices) {
    SceneOptions options = twoTalkers();
    const Row sound = makeScene(options).talker[0];
    options.second_talker_pitch_hz = 250;
    const Row higher = makeScene(options).talker[0];
    EXPECT_EQ(excerpt(higher, 0, 2.9), excerpt(sound, 0, 2.9));
    EXPECT_NE(excerpt(higher, 3.1, 4.9), excerpt(sound, 3.1, 4.9));
}

TEST(SceneTwoTalkers, SayWhatIsGiven) {
    SceneOptions options = twoTalkers();
    options.speech = Row(160);
    options.second_talker_speech = Row(160);
    options.second_talker_speech[80] = 0.1F;  // a click every 10 ms
    const Row sound = makeScene(options).talker[0];
    EXPECT_EQ(powerOf(excerpt(sound, 0, 3)), 0);
    EXPECT_EQ(powerOf(excerpt(sound, 5.1, 7)), 0);
    EXPECT_NEAR(levelDbfs(excerpt(sound, 3.1, 4.9)), -26, 0.5);
}

TEST(SceneTwoTalkers, TheirTurnsAreKnown) {
    const SceneOptions options = twoTalkers();
    EXPECT_EQ(talkerAt(options, 0), 0);
    EXPECT_EQ(talkerAt(options, 2.9), 0);
    EXPECT_EQ(talkerAt(options, 3.1), 1);
    EXPECT_EQ(talkerAt(options, 5.1), 0);
    EXPECT_EQ(talkerAzimuthAt(options, 2.9), 60);
    EXPECT_EQ(talkerAzimuthAt(options, 3.1), 180);
}

TEST(SceneWalkingTalker, ArrivesWhereItShould) {
    const Scene scene = makeScene(walking());
    EXPECT_NEAR(leadOfAzimuth0(scene, 0, 1.9), kAcross, 0.1);
    EXPECT_NEAR(leadOfAzimuth0(scene, 2.9, 3.1), 0, 0.5);
    EXPECT_NEAR(leadOfAzimuth0(scene, 4.1, 6), -kAcross, 0.1);
}

TEST(SceneWalkingTalker, SoundsTheSameAtTheCentre) {
    SceneOptions options = walking();
    const Row sound = makeScene(options).talker[0];
    options.walk_deg = 0;
    const Row still = makeScene(options).talker[0];
    for (size_t i = 0; i < sound.size(); ++i) ASSERT_NEAR(sound[i], still[i], 1e-5) << i;
}

TEST(SceneWalkingTalker, ItsAzimuthIsKnown) {
    const SceneOptions options = walking();
    EXPECT_EQ(talkerAzimuthAt(options, 1), 0);
    EXPECT_EQ(talkerAzimuthAt(options, 2.5), 45);
    EXPECT_EQ(talkerAzimuthAt(options, 5), 180);
}

TEST(SceneDirectSound, IsTheTalkerInFreeField) {
    const Scene scene = makeScene(twoTalkers());
    for (size_t i = 0; i < scene.frames; ++i)
        ASSERT_NEAR(scene.talker_direct[i], scene.talker[0][i], 1e-5) << i;
}

TEST(SceneDirectSound, IsPartOfTheTalkerInARoom) {
    SceneOptions options = talkerAlone(3);
    options.reverberation_s = 0.2;
    const Scene scene = makeScene(options);
    Row reflections = scene.talker[0];
    for (size_t i = 0; i < reflections.size(); ++i) reflections[i] -= scene.talker_direct[i];
    EXPECT_NEAR(delayBetween(scene.talker_direct, scene.talker[0], 5), 0, 0.1);
    EXPECT_LT(levelDbfs(reflections), levelDbfs(scene.talker[0]) - 1);
}

TEST(SceneDeadMicrophone, IsSilentInEveryPart) {
    SceneOptions options = fullScene(1);
    const Scene healthy = makeScene(options);
    options.dead_channel = 5;  // microphone 3
    const Scene scene = makeScene(options);
    for (size_t m = 0; m < kMicrophones; ++m) {
        const Row expected = m == 3 ? Row(scene.frames) : healthy.mixture()[m];
        EXPECT_EQ(scene.mixture()[m], expected) << "microphone " << m;
    }
}

}  // namespace
}  // namespace se_scene
