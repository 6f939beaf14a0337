// Weights of the beams where a block is mostly residual echo.
#include "tests/reference_engine/echo_scene.h"

using namespace reference_engine_test;

namespace {

class EchoBeams : public EchoTest {
  protected:
    // The first fifth of a second of an echo, whose path is not known yet.
    Samples firstBlocks(uint16_t aec_bypass, int16_t most_sharpness_q10) const {
        se_scene::SceneOptions options = echoOptions(GetParam(), 1);
        options.echo_delay_ms = 0;
        const se_scene::Scene scene = makeScene(options);
        start();
        engine.MMIfSetAecBypass(aec_bypass);
        engine.SEDiagSetInt16(engine.diag("mmfx_most_sharpness_q10"), most_sharpness_q10);
        return between(process(se_scene::toInt16(scene.far_end), scene.mixture()), 0, 0.2);
    }
};
INSTANTIATE_FOR_EACH_BUILD(EchoBeams);

}  // namespace

TEST_P(EchoBeams, AreRobustWhileResidualEchoIsMostOfTheSound) {
    EXPECT_EQ(firstBlocks(0, 1024), firstBlocks(0, 0));
}

TEST_P(EchoBeams, AreSharpForTheEchoOfABypassedCanceller) {
    EXPECT_NE(firstBlocks(1, 1024), firstBlocks(1, 0));
}
