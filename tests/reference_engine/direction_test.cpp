// The search finds the talker: on its steps, between them, in the free field and in a room.
#include <cmath>
#include <cstdlib>
#include <tuple>

#include "tests/reference_engine/engine_under_test.h"
#include "tools/scene/scene.h"

using namespace reference_engine_test;

namespace {

// Azimuths in degrees: every step, 10 degrees on either side of each step, and halfway between two steps.
std::vector<int> azimuths() {
    std::vector<int> all;
    for (int step = 0; step < 360; step += 30) {
        all.push_back(step);
        all.push_back((step + (step % 60 == 0 ? 10 : 350)) % 360);
    }
    all.insert(all.end(), {15, 105, 195, 285});
    return all;
}

int degreesBetween(int a, int b) {
    const int difference = std::abs(a - b) % 360;
    return std::min(difference, 360 - difference);
}

class Direction : public testing::TestWithParam<std::tuple<Build, int>> {
  protected:
    Direction() : engine(std::get<0>(GetParam())) { engine.MMIfInit(0); }
    int azimuth() const { return std::get<1>(GetParam()); }

    // From 1.5 seconds on, the location is always one of those nearest to the talker.
    void expectTalkerFound(double reverberation_s) {
        se_scene::SceneOptions options;
        options.seconds = 3;
        options.seed = static_cast<uint32_t>(azimuth() + 1);
        options.array_radius_m = arrayRadiusOf(std::get<0>(GetParam()));
        options.talker_azimuth_deg = azimuth();
        options.diffuse_noise_dbfs = -46;
        options.reverberation_s = reverberation_s;
        const se_scene::MicrophoneRows rows = se_scene::makeScene(options).mixture();

        int wrong = 0;
        for (size_t start = 0; start + kBlock <= rows[0].size(); start += kBlock) {
            se_scene::MicrophoneRows block;
            for (const auto& row : rows) {
                const auto begin = row.begin() + static_cast<ptrdiff_t>(start);
                block.emplace_back(begin, begin + kBlock);
            }
            engine.process(block);
            if (start >= 24000 && degreesBetween(30 * engine.location(), azimuth()) > 15) ++wrong;
        }
        EXPECT_EQ(wrong, 0) << "blocks, at last at " << 30 * engine.location() << " degrees";
        EXPECT_GT(engine.confidence(), 3000);
    }

    EngineUnderTest engine;
};

INSTANTIATE_TEST_SUITE_P(EachBuild, Direction,
                         testing::Combine(testing::Values(Build::kBeam, Build::kDeviceModel),
                                          testing::ValuesIn(azimuths())),
                         [](const auto& each) {
                             return nameOf(std::get<0>(each.param)) + "_" +
                                    std::to_string(std::get<1>(each.param));
                         });

class Search : public EngineTest {};
INSTANTIATE_FOR_EACH_BUILD(Search);

}  // namespace

TEST_P(Direction, IsFoundInFreeField) {
    expectTalkerFound(0);
}

TEST_P(Direction, IsFoundInARoom) {
    expectTalkerFound(0.3);
}

TEST_P(Search, IsConfidentInFreeFieldAndNotInDiffuseNoise) {
    se_scene::SceneOptions options;
    options.seconds = 3;
    options.array_radius_m = arrayRadiusOf(GetParam());
    const se_scene::Scene clean = se_scene::makeScene(options);
    engine.process(clean.mixture());
    EXPECT_GT(engine.confidence(), 16000);
    options.diffuse_noise_dbfs = -30;
    engine.MMIfInit(0);
    engine.process(se_scene::makeScene(options).noise);
    EXPECT_LT(engine.confidence(), 5000);
}

TEST_P(Search, StaysWhereItIsInSilence) {
    se_scene::SceneOptions options;
    options.seconds = 2;
    options.array_radius_m = arrayRadiusOf(GetParam());
    options.talker_azimuth_deg = 240;
    engine.process(se_scene::makeScene(options).mixture());
    engine.processAlike(std::vector<int16_t>(1600, 0));  // flushes the analysis frame
    const int confidence = engine.confidence();
    engine.processAlike(std::vector<int16_t>(16000 * 5, 0));
    EXPECT_EQ(engine.location(), 8);
    EXPECT_EQ(engine.confidence(), confidence);
}

TEST_P(Search, FindsTheTalkerWithADeadMicrophone) {
    se_scene::SceneOptions options;
    options.seconds = 3;
    options.array_radius_m = arrayRadiusOf(GetParam());
    options.talker_azimuth_deg = 150;
    const se_scene::MicrophoneRows rows = se_scene::makeScene(options).mixture();
    for (const size_t dead : {size_t{0}, size_t{3}}) {
        se_scene::MicrophoneRows broken = rows;
        std::fill(broken[dead].begin(), broken[dead].end(), 0.0f);
        engine.MMIfInit(0);
        engine.process(broken);
        EXPECT_EQ(engine.location(), 5) << dead;
    }
}
