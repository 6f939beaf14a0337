// The echo that the canceller leaves is taken away by the noise reduction, as far as the safety factor says.
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
    const double little = powerOf(between(processed(scene, 128), 2, 6));
    EXPECT_GT(decibels(none / little), 1);
    EXPECT_GT(decibels(little / unity), 1);
    EXPECT_GT(decibels(none / unity), 6);
}
