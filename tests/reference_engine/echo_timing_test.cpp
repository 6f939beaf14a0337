// Echoes whose delay is any, jumps or grows, as playback chains make them.
#include <algorithm>
#include <cmath>

#include "tests/reference_engine/echo_scene.h"

using namespace reference_engine_test;

namespace {

class EchoTiming : public EchoTest {
  protected:
    // Of the whole engine, with the noise reduction, which removes the residual echo, too.
    double reducedEnhancement(const se_scene::Scene& scene, double begin_s, double end_s) const {
        start();
        engine.MMIfSetNoiseReductionBypass(0);
        const Samples out = process(se_scene::toInt16(scene.far_end), scene.mixture());
        const Samples microphone = se_scene::toInt16(scene.echo[0]);
        return decibels(powerOf(between(microphone, begin_s, end_s)) / powerOf(between(out, begin_s, end_s)));
    }

    float delayMs() const { return engine.SEDiagGetFloat32(engine.diag("seaec_delay_ms")); }
    float driftPpm() const { return engine.SEDiagGetFloat32(engine.diag("seaec_drift_ppm")); }
};
INSTANTIATE_FOR_EACH_BUILD(EchoTiming);

}  // namespace

TEST_P(EchoTiming, EveryDelayIsCancelledAlike) {
    double least = 1000, most = 0;
    for (const double delay_ms : {0.0, 7.5, 10.0, 93.4, 250.0}) {
        se_scene::SceneOptions options = echoOptions(GetParam(), 4);
        options.echo_delay_ms = delay_ms;
        const double left = enhancement(makeScene(options), 1, 4);
        least = std::min(least, left);
        most = std::max(most, left);
    }
    EXPECT_GT(least, 20);
    EXPECT_LT(most - least, 12);
}

TEST_P(EchoTiming, ADelayBeyondTheTailIsFound) {
    se_scene::SceneOptions options = echoOptions(GetParam(), 5);
    options.echo_delay_ms = 480;
    EXPECT_GT(enhancement(makeScene(options), 3, 5), 25);
    EXPECT_NEAR(delayMs(), 480, 2);
}

TEST_P(EchoTiming, AStrongEchoIsRemovedFromItsStart) {
    se_scene::SceneOptions options = echoOptions(GetParam(), 4);
    options.echo_level_dbfs = options.far_end_level_dbfs + 6;
    for (const double delay_ms : {5.0, 130.3, 230.4}) {
        options.echo_delay_ms = delay_ms;
        const se_scene::Scene scene = makeScene(options);
        EXPECT_GT(reducedEnhancement(scene, 0, 0.7), 25) << delay_ms;
        EXPECT_GT(reducedEnhancement(scene, 0, 4), 35) << delay_ms;
    }
}

TEST_P(EchoTiming, AJumpOfTheDelayIsFollowed) {
    for (const double jump_ms : {20.0, -50.0, 100.0}) {
        se_scene::SceneOptions options = echoOptions(GetParam(), 9);
        options.echo_delay_ms = 60;
        options.echo_jump_s = 4;
        options.echo_jump_ms = jump_ms;
        const se_scene::Scene scene = makeScene(options);
        EXPECT_GT(reducedEnhancement(scene, 4, 6), 15) << jump_ms;
        EXPECT_GT(enhancement(scene, 6, 9), 25) << jump_ms;
        EXPECT_NEAR(delayMs(), 60 + jump_ms, 2);
    }
}

TEST_P(EchoTiming, ClocksThatDifferAreFollowed) {
    for (const double drift_ppm : {-100.0, 50.0, 200.0}) {
        se_scene::SceneOptions options = echoOptions(GetParam(), 9);
        options.echo_delay_ms = 40;
        options.echo_drift_ppm = drift_ppm;
        EXPECT_GT(enhancement(makeScene(options), 4, 9), 25) << drift_ppm;
        EXPECT_NEAR(driftPpm(), drift_ppm, 5);
    }
}

TEST_P(EchoTiming, ClocksThatAgreeAreLeftAlone) {
    se_scene::SceneOptions options = echoOptions(GetParam(), 9);
    options.talker_level_dbfs = -26;
    options.talker_start_s = 3;
    const se_scene::Scene scene = makeScene(options);
    process(se_scene::toInt16(scene.far_end), scene.mixture());
    EXPECT_NEAR(driftPpm(), 0, 40);
}

// Of a sound that repeats itself, every delay in its period would do for a while.
TEST_P(EchoTiming, ToneAndMelodyMoveNothingWrongly) {
    for (const double seconds_a_note : {100.0, 0.25}) {
        se_scene::SceneOptions options = echoOptions(GetParam(), 7);
        options.echo_delay_ms = 130;
        double phase = 0;
        for (int i = 0; i < 7 * se_scene::kSampleRate; ++i) {
            const int note = static_cast<int>(i / (seconds_a_note * se_scene::kSampleRate));
            phase += 2 * M_PI * 110 * std::pow(2, note * 7 % 12 / 12.0) / se_scene::kSampleRate;
            double sum = 0;
            for (int harmonic = 1; harmonic < 30; ++harmonic) sum += std::sin(harmonic * phase) / harmonic;
            options.far_end_speech.push_back(static_cast<float>(0.1 * sum));
        }
        EXPECT_GT(enhancement(makeScene(options), 5, 7), 25) << seconds_a_note;
    }
}
