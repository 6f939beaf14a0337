// The far end towards the loudspeaker.
#include "tests/reference_engine/engine_under_test.h"
#include "tests/reference_engine/signals.h"

using namespace reference_engine_test;

namespace {

class ReceivePath : public EngineTest {
  protected:
    Samples played(const Samples& far_end) {
        Samples out(kBlock, 99);
        engine.RcvIfProcessReceivePath(far_end.data(), out.data());
        return out;
    }
    // The first sample of a block, played.
    int16_t played(int16_t sample) { return played(Samples(kBlock, sample))[0]; }
};
INSTANTIATE_FOR_EACH_BUILD(ReceivePath);

}  // namespace

TEST_P(ReceivePath, IsTransparentAtUnity) {
    const Samples far_end = whiteNoise(kBlock, 0, 1);
    engine.MMIfSetReceivePathGainQ10(1024);
    EXPECT_EQ(played(far_end), far_end);
}

TEST_P(ReceivePath, RoundsTheProductWithItsGain) {
    engine.MMIfSetReceivePathGainQ10(512);
    EXPECT_EQ(played(1001), 501);
    EXPECT_EQ(played(-1001), -500);
}

TEST_P(ReceivePath, Saturates) {
    engine.MMIfSetReceivePathGainQ10(32767);
    EXPECT_EQ(played(2000), 32767);
    EXPECT_EQ(played(-32768), -32768);
}

TEST_P(ReceivePath, HasNoNegativeGain) {
    engine.MMIfSetReceivePathGainQ10(-1024);
    EXPECT_EQ(played(1000), 0);
}

TEST_P(ReceivePath, TakesItsGainFromTheDiagnosticToo) {
    engine.SEDiagSetInt16(engine.diag(receiveGainOf(GetParam())), 2048);
    EXPECT_EQ(played(1000), 2000);
}

TEST_P(ReceivePath, ShowsItsGainInTheDiagnostic) {
    engine.MMIfSetReceivePathGainQ10(700);
    EXPECT_EQ(engine.SEDiagGetInt16(engine.diag(receiveGainOf(GetParam()))), 700);
}

TEST_P(ReceivePath, MayWriteOverItsInput) {
    Samples block(kBlock, 1000);
    engine.MMIfSetReceivePathGainQ10(512);
    engine.RcvIfProcessReceivePath(block.data(), block.data());
    EXPECT_EQ(block, Samples(kBlock, 500));
}
