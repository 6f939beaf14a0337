// Babble: speech from many directions at once.
#include <gtest/gtest.h>

#include <cmath>

#include "tests/tools/scene/test_scenes.h"

namespace se_scene {
namespace {

SceneOptions babbleAlone(double seconds) {
    SceneOptions options = silentScene(seconds);
    options.diffuse_noise_dbfs = -40;
    options.diffuse_noise_colour = NoiseColour::kBabble;
    return options;
}

// Standard deviation of the level of blocks of 50 ms.
double levelSpread(const Row& row) {
    double n = 0, sum = 0, squares = 0;
    for (double begin_s = 0; begin_s < 9.9; begin_s += 0.05) {
        const double level = levelDbfs(excerpt(row, begin_s, begin_s + 0.05));
        n += 1;
        sum += level;
        squares += level * level;
    }
    return std::sqrt(squares / n - sum * sum / n / n);
}

TEST(SceneBabble, HasTheLevelAskedFor) {
    EXPECT_NEAR(levelDbfs(makeScene(babbleAlone(4)).noise[0]), -40, 0.1);
}

TEST(SceneBabble, RisesAndFallsUnlikeNoise) {
    SceneOptions options = babbleAlone(10);
    EXPECT_GT(levelSpread(makeScene(options).noise[0]), 1.5);
    options.diffuse_noise_colour = NoiseColour::kPink;
    EXPECT_LT(levelSpread(makeScene(options).noise[0]), 1.2);
}

TEST(SceneBabble, ComesFromAllAround) {
    const Scene scene = makeScene(babbleAlone(4));
    for (size_t m = 1; m < kMicrophones; ++m) EXPECT_NEAR(levelDbfs(scene.noise[m]), -40, 1) << m;
}

// Of one tone, the sum is that tone.
TEST(SceneBabble, HasTheVoicesGiven) {
    constexpr double kHertz = 50;
    SceneOptions options = babbleAlone(2);
    Row tone(kSampleRate);
    for (size_t i = 0; i < tone.size(); ++i)
        tone[i] = static_cast<float>(std::sin(2 * M_PI * kHertz * static_cast<double>(i) / kSampleRate));
    options.babble_speech = {tone, tone};
    const Row noise = makeScene(options).noise[0];
    EXPECT_NEAR(levelDbfs(noise), -40, 0.1);
    Row difference = excerpt(noise, 0.5, 1.5);
    const Row later = excerpt(noise, 0.5 + 1 / kHertz, 1.5 + 1 / kHertz);
    for (size_t i = 0; i < difference.size(); ++i) difference[i] -= later[i];
    EXPECT_LT(levelDbfs(difference), -90);
}

TEST(SceneBabble, FitsIntoASmallRoom) {
    SceneOptions options = babbleAlone(1);
    options.reverberation_s = 0.2;
    options.room = {3, 3, 2.2};
    EXPECT_NEAR(levelDbfs(makeScene(options).noise[0]), -40, 0.1);
}

}  // namespace
}  // namespace se_scene
