// When the talker speaks, and which voice it has.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/tools/scene/test_scenes.h"

namespace se_scene {
namespace {

TEST(SceneTalker, SpeaksOnlyInItsInterval) {
    SceneOptions options = talkerAlone(3);
    options.talker_start_s = 1;
    options.talker_end_s = 2;
    const Row talker = makeScene(options).talker[0];
    EXPECT_LT(levelDbfs(excerpt(talker, 0, 1)), -120);
    EXPECT_GT(levelDbfs(excerpt(talker, 1, 2)), -40);
    EXPECT_LT(levelDbfs(excerpt(talker, 2.01, 3)), -120);
}

TEST(SceneTalker, GivenSpeechIsRepeatedAsNeeded) {
    SceneOptions options = talkerAlone(0.5);
    options.talker_distance_m = 0.25;
    options.speech.assign(800, 0.0F);
    options.speech[100] = 0.5F;
    const Row talker = makeScene(options).talker[0];
    const auto peakFrom = [&talker](double start_s) {
        const Row period = excerpt(talker, start_s, start_s + 0.05);
        return *std::max_element(period.begin(), period.end());
    };
    EXPECT_GT(peakFrom(0), 0);
    EXPECT_NEAR(peakFrom(0.2) / peakFrom(0), 1, 1e-3);
    EXPECT_NEAR(peakFrom(0.4) / peakFrom(0), 1, 1e-3);
}

TEST(SceneTalker, GivenSpeechReplacesTheVoice) {
    SceneOptions options = talkerAlone(0.5);
    const Row voice = makeScene(options).talker[0];
    options.speech = Row(160, 0.1F);
    EXPECT_NE(makeScene(options).talker[0], voice);
}

}  // namespace
}  // namespace se_scene
