// The search among other sound: a loudspeaker that distorts, noise as loud as the talker.
#include "tests/reference_engine/echo_scene.h"

using namespace reference_engine_test;

namespace {

// 6 dB above the level of what the loudspeaker plays, whose peaks are 12 dB above it.
constexpr double kClipsAtDbfs = -20;

class SearchAmongOthers : public EngineTest {
  protected:
    // Share of the blocks between two moments in which the engine looks at one of two neighbouring locations.
    double shareAt(const se_scene::Scene& scene, int location, double begin_s, double end_s) {
        const Samples far_end =
            scene.far_end.empty() ? Samples(scene.frames) : se_scene::toInt16(scene.far_end);
        const se_scene::MicrophoneRows rows = scene.mixture();
        engine.MMIfInit(0);
        Samples played(kBlock);
        int there = 0, blocks = 0;
        for (size_t start = 0; start + kBlock <= scene.frames; start += kBlock) {
            se_scene::MicrophoneRows block;
            for (const auto& row : rows) {
                const auto begin = row.begin() + static_cast<ptrdiff_t>(start);
                block.emplace_back(begin, begin + kBlock);
            }
            engine.RcvIfProcessReceivePath(far_end.data() + start, played.data());
            engine.process(block);
            const double time = static_cast<double>(start) / se_scene::kSampleRate;
            if (time < begin_s || time >= end_s) continue;
            ++blocks;
            if (engine.location() == location) ++there;
        }
        return static_cast<double>(there) / blocks;
    }
};
INSTANTIATE_FOR_EACH_BUILD(SearchAmongOthers);

se_scene::SceneOptions room(Build build, uint32_t seed, double seconds) {
    se_scene::SceneOptions options;
    options.seconds = seconds;
    options.seed = seed;
    options.array_radius_m = arrayRadiusOf(build);
    options.reverberation_s = 0.3;
    return options;
}

se_scene::SceneOptions clippingLoudspeaker(Build build, uint32_t seed) {
    se_scene::SceneOptions options = room(build, seed, 9);
    options.echo_level_dbfs = -20;
    options.echo_azimuth_deg = 330;
    options.echo_delay_ms = 63;
    options.loudspeaker_limit_dbfs = kClipsAtDbfs;
    options.talker_level_dbfs = -26;
    options.talker_azimuth_deg = 120;
    options.talker_start_s = 3;
    return options;
}

se_scene::SceneOptions talkerInLoudNoise(Build build, uint32_t seed, double seconds) {
    se_scene::SceneOptions options = room(build, seed, seconds);
    options.diffuse_noise_dbfs = -32;
    options.talker_level_dbfs = -32;
    options.talker_azimuth_deg = 240;
    options.talker_start_s = 4;
    return options;
}

}  // namespace

TEST_P(SearchAmongOthers, FindsTheTalkerBesideALoudspeakerThatClips) {
    for (const uint32_t seed : {1U, 2U, 3U}) {
        EXPECT_GT(shareAt(makeScene(clippingLoudspeaker(GetParam(), seed)), 4, 4, 9), 0.5) << seed;
    }
}

TEST_P(SearchAmongOthers, FindsATalkerInTheLoudspeakersDirection) {
    for (const uint32_t seed : {1U, 2U, 3U}) {
        se_scene::SceneOptions options = clippingLoudspeaker(GetParam(), seed);
        options.loudspeaker_limit_dbfs = 0;
        options.talker_azimuth_deg = 330;
        EXPECT_GT(shareAt(makeScene(options), 11, 5, 9), 0.7) << seed;
    }
}

TEST_P(SearchAmongOthers, FindsATalkerAsLoudAsTheNoiseAfterTheNoiseIsKnown) {
    for (const uint32_t seed : {1U, 2U, 3U}) {
        EXPECT_GT(shareAt(makeScene(talkerInLoudNoise(GetParam(), seed, 8)), 8, 5, 8), 0.9) << seed;
    }
}

TEST_P(SearchAmongOthers, TurnsWithinTheFirstWordsOfATalkerAsLoudAsTheNoise) {
    constexpr uint32_t kFirstSeed = 11, kSeeds = 6;
    double share = 0;
    for (uint32_t seed = kFirstSeed; seed < kFirstSeed + kSeeds; ++seed) {
        share += shareAt(makeScene(talkerInLoudNoise(GetParam(), seed, 5)), 8, 4.1, 4.7);
    }
    EXPECT_GT(share / kSeeds, 0.7);
}
