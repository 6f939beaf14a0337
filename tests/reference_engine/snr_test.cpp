// Gain of the beam former: signal-to-noise ratio at the output against that at the centre microphone.
// With a manual location and a bypassed noise reduction the path is linear, so talker and noise are processed
// one after the other.
#include "tests/reference_engine/engine_under_test.h"
#include "tests/reference_engine/signals.h"
#include "tools/scene/measure.h"
#include "tools/scene/scene.h"

using namespace reference_engine_test;

namespace {

enum Source { kBeam, kCentreMicrophone };  // the labels of seout_source

class SignalToNoise : public EngineTest {
  protected:
    // The talker is in the look direction, on a microphone's azimuth (location 0) or between two (1).
    se_scene::Scene scene(int location, double sensor_dbfs, double diffuse_dbfs,
                          se_scene::NoiseColour colour = se_scene::NoiseColour::kWhite) {
        se_scene::SceneOptions options;
        options.seconds = 3;
        options.array_radius_m = arrayRadiusOf(GetParam());
        options.talker_azimuth_deg = 30 * location;
        options.sensor_noise_dbfs = sensor_dbfs;
        options.diffuse_noise_dbfs = diffuse_dbfs;
        options.diffuse_noise_colour = colour;
        return se_scene::makeScene(options);
    }

    Samples alone(int location, const se_scene::MicrophoneRows& rows, int source = kBeam) {
        engine.MMIfInit(0);
        engine.MMIfSetNoiseReductionBypass(1);
        engine.SEDiagSetEnumAsInt(engine.diag("seout_source"), source);
        engine.MMIfSetManualLocation(location, 0);
        return engine.process(rows);
    }

    // Of the beam, once the noise of the scene has been heard.
    double sharpness(const se_scene::Scene& parts) {
        alone(0, parts.noise);
        return static_cast<double>(engine.SEDiagGetFloat32(engine.diag("mmfx_sharpness")));
    }

    double gainInDecibels(int location, const se_scene::Scene& parts, int source = kBeam) {
        const double out =
            powerOf(alone(location, parts.talker, source)) / powerOf(alone(location, parts.noise, source));
        return decibels(out) - se_scene::ratioDb(parts.talker[0], parts.noise[0]);
    }
};
INSTANTIATE_FOR_EACH_BUILD(SignalToNoise);

}  // namespace

TEST_P(SignalToNoise, RisesBySevenDecibelsInSensorNoise) {
    for (const int location : {0, 1}) {
        EXPECT_GE(gainInDecibels(location, scene(location, -40, se_scene::kSilent)), 7.0) << location;
    }
}

TEST_P(SignalToNoise, RisesBySevenAndAHalfDecibelsInDiffuseNoise) {
    for (const int location : {0, 1}) {
        EXPECT_GE(gainInDecibels(location, scene(location, -120, -40)), 7.5) << location;
    }
}

// The high-pass alone raises the SNR here, so the beam is compared with the centre microphone after the
// high-pass.
TEST_P(SignalToNoise, RisesByFiveAndAHalfDecibelsInPinkNoise) {
    for (const int location : {0, 1}) {
        const auto parts = scene(location, -120, -40, se_scene::NoiseColour::kPink);
        const double beam = gainInDecibels(location, parts);
        EXPECT_GE(beam - gainInDecibels(location, parts, kCentreMicrophone), 5.5) << location;
    }
}

TEST_P(SignalToNoise, HasSharpBeamsInDiffuseNoiseAndRobustOnesInSensorNoise) {
    EXPECT_GE(sharpness(scene(0, -120, -40, se_scene::NoiseColour::kPink)), 0.9);
    EXPECT_GE(sharpness(scene(0, -80, -40, se_scene::NoiseColour::kPink)), 0.9);
    EXPECT_LE(sharpness(scene(0, -40, se_scene::kSilent)), 0.1);
    EXPECT_LE(sharpness(scene(0, -40, -50, se_scene::NoiseColour::kPink)), 0.1);
}

TEST_P(SignalToNoise, KeepsTheTalkersLevelAtTheCentre) {
    const se_scene::Scene parts = scene(4, -120, se_scene::kSilent);
    const Samples out = alone(4, parts.talker);
    const double in = se_scene::powerOf(parts.talker[0]) * 32768 * 32768;
    EXPECT_NEAR(decibels(powerOf(out) / in), 0, 1);
}

TEST_P(SignalToNoise, DelaysTheTalkerBy395Samples) {
    const se_scene::Scene parts = scene(4, -120, se_scene::kSilent);
    const Samples out = alone(4, parts.talker);
    const se_scene::Row played(out.begin(), out.end());
    const se_scene::Row centre(parts.talker[0].begin(),
                               parts.talker[0].begin() + static_cast<ptrdiff_t>(out.size()));
    EXPECT_NEAR(se_scene::delayBetween(centre, played, 450), static_cast<double>(kDelay), 0.1);
}
