// Noise in pauses, speech, reverberation, and the bypass.
#include <cstddef>
#include <numeric>
#include <vector>

#include "tests/reference_engine/engine_under_test.h"
#include "tests/reference_engine/signals.h"
#include "tools/scene/scene.h"

using namespace reference_engine_test;

namespace {

constexpr size_t kTalkerStart = 2 * 16000;  // samples; the second before it is a pause

class NoiseReduction : public EngineTest {
  protected:
    se_scene::Scene scene(double talker_dbfs, double sensor_dbfs, double diffuse_dbfs) {
        se_scene::SceneOptions options;
        options.seconds = 6;
        options.array_radius_m = arrayRadiusOf(GetParam());
        options.talker_level_dbfs = talker_dbfs;
        options.talker_start_s = 2;
        options.sensor_noise_dbfs = sensor_dbfs;
        options.diffuse_noise_dbfs = diffuse_dbfs;
        return se_scene::makeScene(options);
    }

    Samples played(const se_scene::MicrophoneRows& rows, bool bypassed) {
        engine.MMIfInit(0);
        engine.MMIfSetManualLocation(2, 0);
        engine.MMIfSetNoiseReductionBypass(bypassed);
        return engine.process(rows);
    }

    static std::vector<double> blockPowers(const Samples& out) {
        std::vector<double> powers;
        for (auto block = out.begin(); block + kBlock <= out.end(); block += kBlock) {
            powers.push_back(powerOf(Samples(block, block + kBlock)));
        }
        return powers;
    }

    static double pausePower(const Samples& out) {
        return powerOf(Samples(out.begin() + kTalkerStart / 2, out.begin() + kTalkerStart));
    }

    double pauseLoweredBy(const se_scene::Scene& parts) {
        const auto mixture = parts.mixture();
        return decibels(pausePower(played(mixture, true)) / pausePower(played(mixture, false)));
    }

    // Level of the talker that is left, in dB: the part of the output that is a multiple of the talker's
    // signal.
    double talkerKept(const se_scene::Scene& parts) {
        const Samples talker = played(parts.talker, true);
        const Samples out = played(parts.mixture(), false);
        double product = 0;
        for (size_t i = kTalkerStart; i < out.size(); ++i) product += double{1} * out[i] * talker[i];
        const double energy = powerOf(talker, kTalkerStart) * static_cast<double>(out.size() - kTalkerStart);
        return 20 * std::log10(product / energy);
    }
};
INSTANTIATE_FOR_EACH_BUILD(NoiseReduction);

}  // namespace

TEST_P(NoiseReduction, LowersNoiseInPausesByTwelveDecibels) {
    EXPECT_GE(pauseLoweredBy(scene(-26, -65, -40)), 12);
    EXPECT_GE(pauseLoweredBy(scene(-26, -45, se_scene::kSilent)), 12);
}

TEST_P(NoiseReduction, KeepsSpeechWithinTwoDecibels) {
    EXPECT_NEAR(talkerKept(scene(-26, -65, -40)), 0, 2);
    EXPECT_NEAR(talkerKept(scene(-26, -45, se_scene::kSilent)), 0, 2);
}

// It is below the resolution of the 16-bit transform unless frames are scaled up.
TEST_P(NoiseReduction, KeepsQuietSpeechToo) {
    const auto parts = scene(-56, -90, -70);
    EXPECT_GE(pauseLoweredBy(parts), 12);
    EXPECT_NEAR(talkerKept(parts), 0, 2);
}

TEST_P(NoiseReduction, LeavesTheSignalAloneAtANoiseWeightOfZero) {
    const Samples noise = whiteNoise(100 * kBlock, -30, 1);
    engine.MMIfSetNoiseReductionBypass(1);
    const Samples whole = engine.processAlike(noise);
    engine.MMIfInit(0);
    engine.SEDiagSetInt16(engine.diag("senr_nf_weight_factor_q10"), 0);
    Samples difference = engine.processAlike(noise);
    for (size_t i = 0; i < difference.size(); ++i) {
        difference[i] = static_cast<int16_t>(difference[i] - whole[i]);
    }
    EXPECT_LT(decibels(powerOf(difference, 8000) / powerOf(whole, 8000)), -40);
}

TEST_P(NoiseReduction, FadesIntoItsBypassWithinABlock) {
    const Samples noise = whiteNoise(100 * kBlock, -20, 1);
    const auto second = [&](bool bypassed_first, bool bypassed_then) {
        engine.MMIfInit(0);
        engine.MMIfSetNoiseReductionBypass(bypassed_first);
        engine.processAlike(noise);
        engine.MMIfSetNoiseReductionBypass(bypassed_then);
        return engine.processAlike(noise);
    };
    const Samples reduced = second(false, false), whole = second(true, true), turned = second(false, true);
    EXPECT_NEAR(turned[0], reduced[0] + (whole[0] - reduced[0]) / 160.0, 1);
    EXPECT_NEAR(turned[79], (whole[79] + reduced[79]) / 2.0, 1);
    EXPECT_EQ(Samples(turned.begin() + kBlock - 1, turned.end()),
              Samples(whole.begin() + kBlock - 1, whole.end()));
}

TEST_P(NoiseReduction, KeepsItsEstimateThroughDigitalSilence) {
    const Samples noise = whiteNoise(200 * kBlock, -40, 1);
    const Samples before = engine.processAlike(noise);
    engine.processAlike(Samples(300 * kBlock, 0));
    const Samples after = engine.processAlike(noise);
    EXPECT_NEAR(decibels(powerOf(after, 8000) / powerOf(before, 16000)), 0, 1);
}

// A tail: 15 dB below the sound of 40 to 120 ms before.
TEST_P(NoiseReduction, LowersTheLateReverberationOfATalker) {
    for (const double reverberation_s : {0.3, 0.5}) {
        se_scene::SceneOptions options;
        options.seconds = 6;
        options.array_radius_m = arrayRadiusOf(GetParam());
        options.reverberation_s = reverberation_s;
        const auto mixture = se_scene::makeScene(options).mixture();
        const std::vector<double> whole = blockPowers(played(mixture, true));
        const std::vector<double> reduced = blockPowers(played(mixture, false));
        double tail = 0, reduced_tail = 0, speech = 0, reduced_speech = 0;
        for (size_t b = kTalkerStart / kBlock; b < whole.size(); ++b) {
            const auto here = whole.begin() + static_cast<std::ptrdiff_t>(b);
            const bool is_tail = *here < std::accumulate(here - 12, here - 4, 0.0) / 8 / 30;
            (is_tail ? tail : speech) += *here;
            (is_tail ? reduced_tail : reduced_speech) += reduced[b];
        }
        EXPECT_GT(decibels(tail / reduced_tail), 4) << reverberation_s;
        EXPECT_LT(decibels(speech / reduced_speech), 1.5) << reverberation_s;
    }
}
