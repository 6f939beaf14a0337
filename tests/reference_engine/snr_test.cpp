// Gain of the beam former: signal-to-noise ratio at the output against that at the centre microphone.
// With a manual location and a bypassed noise reduction the path is linear, so talker and noise are processed
// one after the other.
#include <algorithm>
#include <cmath>
#include <complex>

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

// Of the second half of `signal`, beyond the sine of that frequency; in dB of it.
double distortionOf(const Samples& signal, double hertz) {
    std::complex<double> product = 0;
    double all = 0;
    const size_t begin = signal.size() / 2;
    for (size_t i = begin; i < signal.size(); ++i) {
        product +=
            double{1} * signal[i] * std::polar(1.0, -2 * M_PI * hertz * static_cast<double>(i) / 16000);
        all += double{1} * signal[i] * signal[i];
    }
    const double tone = 2 * std::norm(product) / static_cast<double>(signal.size() - begin);
    return decibels((all - tone) / tone);
}

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

TEST_P(SignalToNoise, HasBeamsAsSharpAsASettingAllows) {
    se_scene::MicrophoneRows noise = scene(0, -120, -40).noise;
    engine.MMIfInit(0);
    engine.SEDiagSetInt16(engine.diag("mmfx_most_sharpness_q10"), 256);
    engine.process(noise);
    EXPECT_EQ(engine.SEDiagGetFloat32(engine.diag("mmfx_sharpness")), 0.25F);
    std::fill(noise[3].begin(), noise[3].end(), 0.0F);
    engine.MMIfInit(0);
    engine.process(noise);
    EXPECT_EQ(engine.SEDiagGetFloat32(engine.diag("mmfx_sharpness")), 0.5F) << "with a dead microphone";
}

// Sharp weights are large where wavelengths are long. Of the largest signals nothing may saturate on the way.
TEST_P(SignalToNoise, DoesNotDistortALoudToneFromTheLookDirection) {
    alone(0, scene(0, -40, se_scene::kSilent).noise);
    std::vector<double> late_s(kMicrophones);
    const int32_t* delays = engine.SEDiagGetInt32Array(engine.diag("mmfx_steering_delay_ns"));
    constexpr size_t kChannelOf[] = {1, 3, 2, 5, 6, 7, 4};  // of the rows
    for (size_t m = 0; m < kMicrophones; ++m) late_s[m] = -1e-9 * delays[kChannelOf[m] - 1];
    const double share = sharpness(scene(0, -120, -40));
    ASSERT_GE(share, 0.9);
    for (const double hertz : {180.0, 300.0, 700.0}) {
        std::vector<Samples> rows(kMicrophones, Samples(100 * kBlock));
        for (size_t m = 0; m < kMicrophones; ++m) {
            for (size_t i = 0; i < rows[m].size(); ++i) {
                const double time = static_cast<double>(i) / 16000 - late_s[m];
                rows[m][i] = static_cast<int16_t>(std::lround(28000 * std::sin(2 * M_PI * hertz * time)));
            }
        }
        const Samples out = engine.process(rows);
        EXPECT_LT(distortionOf(out, hertz), -40) << hertz;
    }
}

// Halfway between two look directions.
TEST_P(SignalToNoise, KeepsTheLevelOfATalkerBesideTheLookDirection) {
    se_scene::SceneOptions options;
    options.seconds = 6;
    options.array_radius_m = arrayRadiusOf(GetParam());
    options.talker_azimuth_deg = 15;
    options.sensor_noise_dbfs = -70;
    options.diffuse_noise_dbfs = -60;
    const se_scene::Scene parts = se_scene::makeScene(options);
    const Samples out = alone(0, parts.mixture());
    const double in = se_scene::powerOf(parts.talker[0]) * 32768 * 32768;
    EXPECT_NEAR(decibels(powerOf(out) / in), 0, 1.5);
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
