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

TEST(SceneBabble, FitsIntoASmallRoom) {
    SceneOptions options = babbleAlone(1);
    options.reverberation_s = 0.2;
    options.room = {3, 3, 2.2};
    EXPECT_NEAR(levelDbfs(makeScene(options).noise[0]), -40, 0.1);
}

}  // namespace
}  // namespace se_scene
