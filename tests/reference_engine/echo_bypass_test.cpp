// The canceller when it is bypassed, and without a far end.
#include "tests/reference_engine/echo_scene.h"

using namespace reference_engine_test;

namespace {

class EchoBypass : public EchoTest {};
INSTANTIATE_FOR_EACH_BUILD(EchoBypass);

const Samples kNoFarEnd(200 * kBlock, 0);

}  // namespace

TEST_P(EchoBypass, LeavesTheEcho) {
    const se_scene::Scene scene = makeScene(echoOptions(GetParam(), 2));
    const Samples out = bypassed(scene);
    start();
    EXPECT_EQ(out, process(Samples(scene.frames), scene.mixture()));
}

TEST_P(EchoBypass, KeepsAdapting) {
    const se_scene::Scene scene = makeScene(echoOptions(GetParam(), 4));
    const Samples echo = bypassed(scene);
    engine.MMIfSetAecBypass(0);
    const Samples out = process(se_scene::toInt16(scene.far_end), scene.mixture());
    EXPECT_GT(decibels(powerOf(between(echo, 0.5, 2)) / powerOf(between(out, 0.5, 2))), 20);
}

TEST_P(EchoBypass, IsReadBackAsZeroOrOne) {
    engine.MMIfSetAecBypass(7);
    EXPECT_EQ(engine.MMIfGetAecBypass(), 1);
    engine.MMIfSetAecBypass(0);
    EXPECT_EQ(engine.MMIfGetAecBypass(), 0);
}

TEST_P(EchoBypass, WithoutAFarEndNothingIsSubtracted) {
    const Samples noise = whiteNoise(kNoFarEnd.size(), -20, 1);
    const std::vector<Samples> rows(kMicrophones, noise);
    const Samples out = process(kNoFarEnd, rows);
    start();
    EXPECT_EQ(out, engine.process(rows));
}

// A client that stops calling the receive path plays silence.
TEST_P(EchoBypass, AMissingFarEndIsSilent) {
    const Samples noise = whiteNoise(100 * kBlock, -20, 1);
    process(noise, std::vector<Samples>(kMicrophones, noise));
    engine.processAlike(Samples(60 * kBlock, 0));
    EXPECT_EQ(engine.processAlike(Samples(kBlock, 0)), Samples(kBlock, 0));
}
