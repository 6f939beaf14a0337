// The output limiter: nothing wraps or clips, and samples that fit pass unchanged.
#include "tests/reference_engine/engine_under_test.h"
#include "tests/reference_engine/signals.h"

using namespace reference_engine_test;

namespace {

class OutputLimiter : public EngineTest {
  protected:
    // Without the noise reduction, which would treat a tone as noise, and through a beam that stays as it is.
    Samples played(const Samples& in, int32_t gain_q10) {
        engine.MMIfInit(0);
        engine.MMIfSetNoiseReductionBypass(1);
        engine.SEDiagSetInt16(engine.diag("mmfx_most_sharpness_q10"), 0);
        engine.SEDiagSetInt32(engine.diag("seout_gain_q10"), gain_q10);
        return engine.processAlike(in);
    }
};
INSTANTIATE_FOR_EACH_BUILD(OutputLimiter);

// Of `signal`, beyond the part that is a multiple of `shape`; in dB of that part.
double distortion(const Samples& signal, const Samples& shape, size_t begin) {
    double product = 0;
    for (size_t i = begin; i < signal.size(); ++i) product += double{1} * signal[i] * shape[i];
    const double same =
        product * product / powerOf(shape, begin) / static_cast<double>(signal.size() - begin);
    const double all = powerOf(signal, begin) * static_cast<double>(signal.size() - begin);
    return decibels((all - same) / same);
}

}  // namespace

TEST_P(OutputLimiter, ReachesFullScaleAtTheLargestGain) {
    const Samples out = played(sine(40 * kBlock, 1000, 30000), 32767);
    EXPECT_EQ(*std::max_element(out.begin(), out.end()), 32767);
    EXPECT_LE(*std::min_element(out.begin(), out.end()), -32700);
}

TEST_P(OutputLimiter, LeavesWhatFitsAlone) {
    const Samples in = sine(40 * kBlock, 1000, 8000);
    const Samples once = played(in, 1024);
    const Samples twice = played(in, 2048);
    for (size_t i = 0; i < once.size(); ++i) ASSERT_EQ(twice[i], 2 * once[i]) << i;
}

TEST_P(OutputLimiter, ReducesTheGainInsteadOfClipping) {
    const Samples in = sine(40 * kBlock, 440, 20000);
    const Samples loud = played(in, 4096);
    EXPECT_LT(distortion(loud, played(in, 1024), 10 * kBlock), -40);
}

TEST_P(OutputLimiter, ReleasesAfterAPeak) {
    Samples in = sine(200 * kBlock, 440, 4000);
    const Samples quiet = played(in, 2048);
    for (size_t i = 0; i < 10 * kBlock; ++i) in[i] = static_cast<int16_t>(in[i] * 8);
    const Samples out = played(in, 2048);
    const auto late = static_cast<ptrdiff_t>(190 * kBlock);
    EXPECT_EQ(Samples(out.begin() + late, out.end()), Samples(quiet.begin() + late, quiet.end()));
}
