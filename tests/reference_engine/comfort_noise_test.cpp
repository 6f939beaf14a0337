// Comfort noise: as loud as asked for, with the spectrum of the background, the same in each run.
#include "tests/reference_engine/echo_scene.h"
#include "tools/scene/measure.h"

using namespace reference_engine_test;

namespace {

class ComfortNoise : public EchoTest {
  protected:
    void startWith(int16_t share_q10) const {
        start();
        engine.MMIfSetNoiseReductionBypass(0);
        engine.SEDiagSetInt16(engine.diag("senr_comfort_noise_q10"), share_q10);
    }

    // Pink noise alone.
    se_scene::MicrophoneRows background() const {
        se_scene::SceneOptions options;
        options.seconds = 4;
        options.array_radius_m = arrayRadiusOf(GetParam());
        options.talker_level_dbfs = se_scene::kSilent;
        options.diffuse_noise_dbfs = -40;
        return makeScene(options).mixture();
    }

    static double level(const Samples& samples) { return decibels(powerOf(between(samples, 2, 4))); }
};
INSTANTIATE_FOR_EACH_BUILD(ComfortNoise);

// Of the differences of neighbouring samples: of high frequencies, mostly.
double highLevel(const Samples& samples) {
    Samples differences(samples.size() - 1);
    for (size_t i = 0; i < differences.size(); ++i) {
        differences[i] = static_cast<int16_t>(samples[i + 1] - samples[i]);
    }
    return decibels(powerOf(differences, 32000));
}

}  // namespace

TEST_P(ComfortNoise, FillsPausesToTheShareWithTheSpectrumOfTheBackground) {
    const auto noise = background();
    start();
    const Samples whole = engine.process(noise);
    for (const int16_t share : {int16_t{512}, int16_t{1024}}) {
        startWith(share);
        const Samples out = engine.process(noise);
        const double expected = 20 * std::log10(share / 1024.0);
        EXPECT_NEAR(level(out) - level(whole), expected, 1.5);
        EXPECT_NEAR(highLevel(out) - highLevel(whole), expected, 1.5);
    }
}

TEST_P(ComfortNoise, FillsTheBackgroundUnderSuppressedEcho) {
    se_scene::SceneOptions options = echoOptions(GetParam(), 6);
    options.sensor_noise_dbfs = -60;
    const se_scene::Scene scene = makeScene(options);
    const Samples far_end = se_scene::toInt16(scene.far_end);
    const auto late = [](const Samples& samples) { return decibels(powerOf(between(samples, 4, 6))); };
    startWith(0);
    const double without_echo = late(process(Samples(far_end.size()), scene.noise));
    startWith(0);
    const double bare = late(process(far_end, scene.mixture()));
    startWith(205);
    const double filled = late(process(far_end, scene.mixture()));
    EXPECT_NEAR(bare, without_echo, 1.5);
    EXPECT_NEAR(filled, without_echo, 1.5);
    EXPECT_GT(filled, bare + 0.5);
}

TEST_P(ComfortNoise, IsTheSameInEachRunAndEndsInSilence) {
    const auto noise = background();
    const auto run = [&] {
        startWith(1024);
        return engine.process(noise);
    };
    EXPECT_EQ(run(), run());
    const Samples silence = engine.processAlike(Samples(20 * kBlock, 0));
    EXPECT_EQ(between(silence, 0.1, 0.2), Samples(10 * kBlock, 0));
}
