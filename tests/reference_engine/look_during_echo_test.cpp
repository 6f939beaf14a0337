// Where the engine looks while an echo comes back that it had removed: it is no talker.
#include <algorithm>
#include <cstdlib>

#include "tests/reference_engine/engine_under_test.h"
#include "tests/reference_engine/signals.h"
#include "tools/scene/scene.h"

using namespace reference_engine_test;

namespace {

constexpr double kEvent = 5;  // s

class LookDuringEcho : public EngineTest {
  protected:
    se_scene::SceneOptions options(uint32_t seed) const {
        se_scene::SceneOptions options;
        options.seconds = kEvent + 2;
        options.seed = seed;
        options.array_radius_m = arrayRadiusOf(GetParam());
        options.reverberation_s = 0.3;
        return options;
    }

    // The location of each block from the event on, from the initial state.
    std::vector<int> locations(const se_scene::SceneOptions& options) const {
        const se_scene::Scene scene = se_scene::makeScene(options);
        const Samples far_end = se_scene::toInt16(scene.far_end);
        std::vector<Samples> rows;
        for (const auto& row : scene.mixture()) rows.push_back(se_scene::toInt16(row));

        engine.MMIfInit(0);
        std::vector<int> locations;
        for (size_t start = 0; start + kBlock <= scene.frames; start += kBlock) {
            Samples played(kBlock);
            std::vector<Samples> block;
            for (const auto& row : rows) {
                const auto begin = row.begin() + static_cast<ptrdiff_t>(start);
                block.emplace_back(begin, begin + kBlock);
            }
            engine.RcvIfProcessReceivePath(far_end.data() + start, played.data());
            engine.process(block);
            if (static_cast<double>(start) >= kEvent * se_scene::kSampleRate) {
                locations.push_back(engine.location());
            }
        }
        return locations;
    }
};

INSTANTIATE_FOR_EACH_BUILD(LookDuringEcho);

}  // namespace

TEST_P(LookDuringEcho, StaysWithTheTalkerWhenTheLoudspeakerMoves) {
    se_scene::SceneOptions scene = options(32);
    scene.talker_azimuth_deg = 104;
    scene.echo_level_dbfs = -20;
    scene.echo_delay_ms = 164;
    scene.echo_path_change_s = kEvent;
    const std::vector<int> found = locations(scene);
    const auto elsewhere = [](int location) { return std::abs(location - 3) > 1; };
    EXPECT_LT(std::count_if(found.begin(), found.end(), elsewhere), 10);
}

TEST_P(LookDuringEcho, StaysWhenTheDelayJumps) {
    for (const uint32_t seed : {17U, 18U}) {
        se_scene::SceneOptions scene = options(seed);
        scene.talker_level_dbfs = se_scene::kSilent;
        scene.echo_level_dbfs = -26;
        scene.echo_delay_ms = 20.8;
        scene.echo_jump_s = kEvent;
        scene.echo_jump_ms = 50;
        const std::vector<int> found = locations(scene);
        const auto elsewhere = [&](int location) { return location != found.front(); };
        EXPECT_LT(std::count_if(found.begin(), found.end(), elsewhere), 10) << "seed " << seed;
    }
}
