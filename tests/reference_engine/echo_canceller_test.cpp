// Echo attenuation in simulated rooms with a loudspeaker beside the array.
#include <algorithm>

#include "tests/reference_engine/echo_scene.h"

using namespace reference_engine_test;

namespace {

class EchoCanceller : public EchoTest {};
INSTANTIATE_FOR_EACH_BUILD(EchoCanceller);

}  // namespace

TEST_P(EchoCanceller, Removes25DecibelsOnceConverged) {
    const se_scene::Scene scene = makeScene(echoOptions(GetParam(), 9));
    EXPECT_GT(enhancement(scene, 5, 9), 25);
}

// The output is compared with the centre microphone, so the beam former's attenuation is included.
TEST_P(EchoCanceller, Removes25DecibelsAtTheCentreMicrophone) {
    const se_scene::Scene scene = makeScene(echoOptions(GetParam(), 9));
    const Samples microphone = se_scene::toInt16(scene.echo[0]);
    EXPECT_GT(decibels(powerOf(between(microphone, 5, 9)) / powerOf(between(cancelled(scene), 5, 9))), 25);
}

TEST_P(EchoCanceller, Removes10DecibelsInTheFirstSecond) {
    const se_scene::Scene scene = makeScene(echoOptions(GetParam(), 1));
    EXPECT_GT(enhancement(scene, 0, 1), 10);
}

TEST_P(EchoCanceller, Removes15DecibelsWithin2SecondsOfAChangeOfPath) {
    se_scene::SceneOptions options = echoOptions(GetParam(), 8);
    options.echo_path_change_s = 5;
    EXPECT_GT(enhancement(makeScene(options), 6.5, 7), 15);
}

TEST_P(EchoCanceller, CancelsALateEcho) {
    se_scene::Scene scene = makeScene(echoOptions(GetParam(), 9));
    constexpr size_t kLate = 1600;  // samples: 100 ms
    for (auto& row : scene.echo) {
        row.insert(row.begin(), kLate, 0.0f);
        row.resize(scene.frames);
    }
    EXPECT_GT(enhancement(scene, 5, 9), 20);
}

// After a long silence the filter's path is zero with a small uncertainty. It must still adapt to a new path.
TEST_P(EchoCanceller, CancelsAnEchoThatBeginsWhenTheLoudspeakerIsSwitchedOn) {
    se_scene::Scene scene = makeScene(echoOptions(GetParam(), 9));
    for (auto& row : scene.echo) std::fill_n(row.begin(), 4 * se_scene::kSampleRate, 0.0f);
    EXPECT_GT(enhancement(scene, 7.5, 9), 15);
}

TEST_P(EchoCanceller, IsNotDisturbedByAChangeOfLook) {
    const se_scene::Scene scene = makeScene(echoOptions(GetParam(), 8));
    const Samples far_end = se_scene::toInt16(scene.far_end);
    const Samples before = bypassed(scene);
    start();
    engine.MMIfSetManualLocation(8, 0);
    const auto mixture = scene.mixture();
    se_scene::MicrophoneRows first, second;
    const ptrdiff_t half = static_cast<ptrdiff_t>(scene.frames / 2);
    for (const auto& row : mixture) {
        first.emplace_back(row.begin(), row.begin() + half);
        second.emplace_back(row.begin() + half, row.end());
    }
    process(Samples(far_end.begin(), far_end.begin() + half), first);
    engine.MMIfSetManualLocation(2, 0);
    const Samples after = process(Samples(far_end.begin() + half, far_end.end()), second);
    EXPECT_GT(decibels(powerOf(between(before, 4, 5)) / powerOf(between(after, 0, 1))), 20);
}

TEST_P(EchoCanceller, ReportsItsAttenuation) {
    const se_scene::Scene scene = makeScene(echoOptions(GetParam(), 6));
    const double measured = enhancement(scene, 5, 6);
    EXPECT_NEAR(engine.SEDiagGetFloat32(engine.diag("seaec_enhancement_db")), measured, 6);
}

TEST_P(EchoCanceller, ReportsTheDelayOfTheEchoPath) {
    const Samples far_end = whiteNoise(300 * kBlock, -20, 1);
    Samples late = far_end;
    late.insert(late.begin(), 960, int16_t{0});
    late.resize(far_end.size());
    process(far_end, std::vector<Samples>(kMicrophones, late));
    EXPECT_NEAR(engine.SEDiagGetFloat32(engine.diag("seaec_delay_ms")), 60, 2);
    EXPECT_NEAR(engine.SEDiagGetFloat32(engine.diag("seaec_drift_ppm")), 0, 1);
    const float* energy = engine.SEDiagGetFloat32Array(engine.diag("seaec_path_energy"));
    for (int p = 0; p < engine.SEDiagGetLen(engine.diag("seaec_path_energy")); ++p) {
        EXPECT_NEAR(energy[p], p == 0 ? 1 : 0, 0.05) << p;
    }
}

TEST_P(EchoCanceller, ReachesAtLeast128Milliseconds) {
    EXPECT_GE(engine.SEDiagGetUInt16(engine.diag("seaec_tail_ms")), 128);
}
