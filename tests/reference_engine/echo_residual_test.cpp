// The noise reduction removes the residual echo in proportion to the safety factor, and keeps the talker.
#include "tests/reference_engine/echo_scene.h"

using namespace reference_engine_test;

namespace {

class ResidualEcho : public EchoTest {
  protected:
    Samples processed(const se_scene::Scene& scene, int16_t safety_factor_q10) const {
        start();
        engine.MMIfSetNoiseReductionBypass(0);
        engine.SEDiagSetInt16(engine.diag("senr_echo_safety_factor_q10"), safety_factor_q10);
        return process(se_scene::toInt16(scene.far_end), scene.mixture());
    }
};
INSTANTIATE_FOR_EACH_BUILD(ResidualEcho);

}  // namespace

TEST_P(ResidualEcho, IsLowerTheHigherTheSafetyFactor) {
    const se_scene::Scene scene = makeScene(echoOptions(GetParam(), 6));
    const double none = powerOf(between(processed(scene, 0), 2, 6));
    const double unity = powerOf(between(processed(scene, 1024), 2, 6));
    const double little = powerOf(between(processed(scene, 16), 2, 6));
    EXPECT_GT(decibels(none / little), 1);
    EXPECT_GT(decibels(little / unity), 1);
    EXPECT_GT(decibels(none / unity), 6);
}

// The talker speaks in the fifth second, over the echo; before that, the echo is alone.
TEST_P(ResidualEcho, IsRemovedWithoutTheTalker) {
    se_scene::SceneOptions options = echoOptions(GetParam(), 6);
    options.talker_level_dbfs = -26;
    options.talker_start_s = 4;
    const se_scene::Scene scene = makeScene(options);
    const Samples out = processed(scene, 1024);
    const Samples canceller_alone = cancelled(scene);
    const Samples talker = talkerAlone(scene);
    EXPECT_LT(decibels(powerOf(between(out, 2, 4)) / powerOf(between(canceller_alone, 2, 4))), -6);
    EXPECT_NEAR(decibels(powerOf(between(out, 4.2, 6)) / powerOf(between(talker, 4.2, 6))), 0, 3);
}
