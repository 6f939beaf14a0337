// Far ends and microphones at full scale, broken or missing: the canceller does not overflow, and
// recovers.
#include <cmath>
#include <cstdlib>
#include <limits>

#include "tests/reference_engine/echo_scene.h"

using namespace reference_engine_test;

namespace {

AecConvolutionRoutine* g_convolve = nullptr;
bool g_wrapped = false;

// Checks some outputs of each block.
void watchedConvolution(int16_t* coeffs, int16_t* signal, int32_t* out, int32_t shift_right, int32_t num_out,
                        int32_t num_taps, int32_t shift_left) {
    for (int i = 0; i < num_out; i += 40) {
        int64_t sum = shift_right == 0 ? 0 : int64_t{1} << (shift_right - 1);
        for (int k = 0; k < num_taps; ++k) sum += int64_t{coeffs[k]} * signal[i + k];
        if (sum > std::numeric_limits<int32_t>::max() || sum < std::numeric_limits<int32_t>::min()) {
            g_wrapped = true;
        }
    }
    g_convolve(coeffs, signal, out, shift_right, num_out, num_taps, shift_left);
}

class EchoExtremes : public EchoTest {
  protected:
    EchoExtremes() {
        g_convolve = *engine.AecConvolution;
        *engine.AecConvolution = watchedConvolution;
    }

    // After any input an ordinary echo is cancelled a few seconds later.
    void expectRecovery() {
        const Samples far_end = whiteNoise(400 * kBlock, -26, 9);
        const Samples out = process(far_end, std::vector<Samples>(kMicrophones, far_end));
        EXPECT_GT(decibels(powerOf(far_end, 300 * kBlock) / powerOf(out, 300 * kBlock)), 15);
        EXPECT_TRUE(std::isfinite(engine.SEDiagGetFloat32(engine.diag("seaec_enhancement_db"))));
        EXPECT_FALSE(g_wrapped);
    }

    void processAndRecover(const Samples& far_end, const Samples& microphones) {
        process(far_end, std::vector<Samples>(kMicrophones, microphones));
        expectRecovery();
    }
};
INSTANTIATE_FOR_EACH_BUILD(EchoExtremes);

constexpr size_t kFrames = 200 * kBlock;

}  // namespace

TEST_P(EchoExtremes, SilenceEverywhereStaysSilence) {
    const Samples silence(kFrames, 0);
    EXPECT_EQ(process(silence, std::vector<Samples>(kMicrophones, silence)), silence);
    expectRecovery();
}

TEST_P(EchoExtremes, FullScaleSquaresAndTheirEcho) {
    processAndRecover(square(kFrames, 160), square(kFrames, 160));
}

TEST_P(EchoExtremes, UnrelatedFullScaleSquares) {
    processAndRecover(square(kFrames, 100), square(kFrames, 74));
}

TEST_P(EchoExtremes, AlternatingExtremes) {
    processAndRecover(square(kFrames, 2), square(kFrames, 2));
}

TEST_P(EchoExtremes, ConstantExtremes) {
    processAndRecover(Samples(kFrames, -32768), Samples(kFrames, 32767));
}

TEST_P(EchoExtremes, AFarEndOfOneBitAndMicrophonesAtFullScale) {
    processAndRecover(square(kFrames, 50, 1, 0), whiteNoise(kFrames, 0, 3));
}

TEST_P(EchoExtremes, AnEchoFarLouderThanTheFarEnd) {
    const Samples far_end = whiteNoise(kFrames, -60, 3);
    Samples loud = far_end;
    for (int16_t& sample : loud) sample = rounded(200.0 * sample);
    processAndRecover(far_end, loud);
}

TEST_P(EchoExtremes, ATone) {
    processAndRecover(sine(kFrames, 440, 30000), sine(kFrames, 440, 20000));
}

TEST_P(EchoExtremes, ALoudFarEndWithoutAnEcho) {
    processAndRecover(whiteNoise(kFrames, 0, 3), Samples(kFrames, 0));
}

TEST_P(EchoExtremes, DeadMicrophonesDoNotAffectTheOthers) {
    const Samples far_end = whiteNoise(400 * kBlock, -26, 9);
    for (size_t dead = 0; dead < kMicrophones; dead += 3) {
        start();
        std::vector<Samples> rows(kMicrophones, far_end);
        rows[dead].assign(far_end.size(), 0);
        const Samples out = process(far_end, rows);
        EXPECT_GT(decibels(powerOf(far_end, 300 * kBlock) / powerOf(out, 300 * kBlock)), 20);
    }
}
