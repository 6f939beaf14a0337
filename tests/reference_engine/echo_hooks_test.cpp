// The echo of the newest block comes from the routine in the hook.
#include <algorithm>

#include "tests/reference_engine/echo_scene.h"

using namespace reference_engine_test;

namespace {

int g_calls = 0;
int g_taps = 0;
int g_most_taps = 0;

// As exact as the engine's own routine, with another order of the sums.
void backwards(int16_t* coeffs, int16_t* signal, int32_t* out, int32_t shift_right, int32_t num_out,
               int32_t num_taps, int32_t shift_left) {
    ++g_calls;
    g_taps = num_taps;
    g_most_taps = std::max(g_most_taps, num_taps);
    for (int i = 0; i < num_out; ++i) {
        uint32_t sum = shift_right == 0 ? 0 : 1u << (shift_right - 1);
        for (int k = num_taps - 1; k >= 0; --k) sum += static_cast<uint32_t>(coeffs[k] * signal[i + k]);
        const int32_t shifted = static_cast<int32_t>(sum) >> shift_right;
        out[i] = static_cast<int32_t>(static_cast<uint32_t>(shifted) << shift_left);
    }
}

// Estimates no echo.
void nothing(int16_t*, int16_t*, int32_t* out, int32_t, int32_t num_out, int32_t, int32_t) {
    std::fill(out, out + num_out, 0);
}

class EchoHooks : public EchoTest {};
INSTANTIATE_FOR_EACH_BUILD(EchoHooks);

}  // namespace

TEST_P(EchoHooks, PredictTheEchoOfEveryPath) {
    *engine.AecConvolution = backwards;
    process(whiteNoise(10 * kBlock, -30, 1), std::vector<Samples>(kMicrophones, Samples(10 * kBlock, 0)));
    EXPECT_EQ(g_calls, 80);
    EXPECT_EQ(g_taps % 8, 0);
    EXPECT_EQ(g_taps, 160);
}

// The echo of two blocks is then predicted together: that of the newer one still comes from the routine.
TEST_P(EchoHooks, PredictTheEchoOfEachBlockOnceThePathsMatch) {
    const Samples far_end = whiteNoise(200 * kBlock, -26, 1);
    *engine.AecConvolution = backwards;
    const Samples out = process(far_end, std::vector<Samples>(kMicrophones, far_end));
    EXPECT_GT(decibels(powerOf(far_end, 150 * kBlock) / powerOf(out, 150 * kBlock)), 20);
    EXPECT_EQ(g_calls, 200 * 8);
    EXPECT_EQ(g_most_taps, 320);
}

TEST_P(EchoHooks, AreLeftAloneWhileTheFarEndIsSilent) {
    *engine.AecConvolution = backwards;
    process(Samples(10 * kBlock, 0), std::vector<Samples>(kMicrophones, Samples(10 * kBlock, 0)));
    EXPECT_EQ(g_calls, 0);
}

TEST_P(EchoHooks, GiveTheSameOutputToTheBitFromEveryExactRoutine) {
    const se_scene::Scene scene = makeScene(echoOptions(GetParam(), 3));
    const Samples own = cancelled(scene);
    *engine.AecConvolution = backwards;
    EXPECT_EQ(cancelled(scene), own);
}

// The paths are the direct sound alone.
TEST_P(EchoHooks, DetermineTheEstimate) {
    const Samples far_end = whiteNoise(100 * kBlock, -26, 1);
    const std::vector<Samples> echo(kMicrophones, far_end);
    const double own = powerOf(process(far_end, echo), 50 * kBlock);
    start();
    *engine.AecConvolution = nothing;
    const double without = powerOf(process(far_end, echo), 50 * kBlock);
    EXPECT_GT(decibels(without / own), 20);
    start();
    engine.MMIfSetAecBypass(1);
    const double untouched = powerOf(process(far_end, echo), 50 * kBlock);
    EXPECT_NEAR(decibels(without / untouched), 0, 1);
}
