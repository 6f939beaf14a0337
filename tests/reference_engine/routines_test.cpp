// The plain routines, reached through the hook variables: the arithmetic that every replacement must match.
#include <array>

#include "tests/reference_engine/engine_under_test.h"
#include "tests/reference_engine/signals.h"

using namespace reference_engine_test;

namespace {

class PlainRoutines : public testing::TestWithParam<Build> {
  protected:
    PlainRoutines() : engine(GetParam()) {}

    // The same product for each element.
    Samples multiplied(int16_t ar, int16_t ai, int16_t br, int16_t bi, uint16_t n) {
        Samples a, b, out(size_t{n} * 2, 99);
        for (int k = 0; k < n; ++k) {
            a.insert(a.end(), {ar, ai});
            b.insert(b.end(), {br, bi});
        }
        (*engine.VCMul_i16)(a.data(), b.data(), out.data(), n);
        return out;
    }

    std::vector<int32_t> convolved(Samples coeffs, Samples signal, int num_out, int num_taps, int right,
                                   int left) {
        std::vector<int32_t> out(24, 99);
        (*engine.AecConvolution)(coeffs.data(), signal.data(), out.data(), right, num_out, num_taps, left);
        return out;
    }

    Samples filtered(Samples coeffs, Samples signal, uint16_t num_out, uint16_t step) {
        Samples out(num_out, 99);
        const auto order = static_cast<uint16_t>(coeffs.size() - 1);
        (*engine.ComputeRFir)(signal.data(), coeffs.data(), out.data(), order, num_out, step);
        return out;
    }

    EngineUnderTest engine;
};
INSTANTIATE_FOR_EACH_BUILD(PlainRoutines);

constexpr int16_t kMin = -32768;

}  // namespace

TEST_P(PlainRoutines, ComplexMultiplyOfHalvesIsAQuarter) {
    EXPECT_EQ(multiplied(16384, 0, 16384, 0, 1), (Samples{8192, 0}));
}

TEST_P(PlainRoutines, ComplexMultiplySaturates) {
    EXPECT_EQ(multiplied(kMin, 0, kMin, 0, 1), (Samples{32767, 0}));
}

TEST_P(PlainRoutines, ComplexMultiplyInFoursCannotNegateTheLeastValue) {
    EXPECT_EQ(multiplied(0, kMin, 0, 16384, 4), (Samples{-16384, 0, -16384, 0, -16384, 0, -16384, 0}));
}

TEST_P(PlainRoutines, ComplexMultiplyOneAtATimeNegatesTheLeastValue) {
    EXPECT_EQ(multiplied(0, kMin, 0, 16384, 1), (Samples{16384, 0}));
}

TEST_P(PlainRoutines, ComplexMultiplySplitsFiveIntoFourAndOne) {
    const Samples out = multiplied(0, kMin, 0, 16384, 5);
    EXPECT_EQ(out[6], -16384);
    EXPECT_EQ(out[8], 16384);
}

TEST_P(PlainRoutines, ComplexMultiplyWrapsWhereTheSumPasses31Bits) {
    EXPECT_EQ(multiplied(kMin, kMin, kMin, kMin, 1)[1], kMin);
    EXPECT_EQ(multiplied(kMin, kMin, kMin, kMin, 4)[1], kMin);
}

TEST_P(PlainRoutines, ComplexMultiplyOfNothingWritesNothing) {
    Samples a(2, 5), b(2, 5), out(2, 99);
    (*engine.VCMul_i16)(a.data(), b.data(), out.data(), 0);
    EXPECT_EQ(out, Samples(2, 99));
}

TEST_P(PlainRoutines, FilterIsACorrelation) {
    Samples signal(16);
    for (size_t i = 0; i < 16; ++i) signal[i] = static_cast<int16_t>(100 * i);
    EXPECT_EQ(filtered({0, 0, 16384}, signal, 3, 1), (Samples{100, 150, 200}));
}

TEST_P(PlainRoutines, FilterWithoutCoefficientsGivesZerosOnEveryPath) {
    const Samples signal(64, kMin);
    EXPECT_EQ(filtered(Samples(8, 0), signal, 16, 1), Samples(16, 0));
    EXPECT_EQ(filtered(Samples(5, 0), signal, 16, 1), Samples(16, 0));
    EXPECT_EQ(filtered(Samples(8, 0), signal, 13, 1), Samples(13, 0));
    EXPECT_EQ(filtered(Samples(8, 0), signal, 16, 2), Samples(16, 0));
}

TEST_P(PlainRoutines, FilterInEightsWrapsIn32Bits) {
    EXPECT_EQ(filtered(Samples(8, kMin), Samples(24, kMin), 8, 1), Samples(8, 0));
    EXPECT_EQ(filtered(Samples(2, kMin), Samples(24, kMin), 8, 1), Samples(8, kMin));
}

TEST_P(PlainRoutines, FilterOfOtherLengthsSumsIn64Bits) {
    EXPECT_EQ(filtered(Samples(8, kMin), Samples(24, kMin), 7, 1), Samples(7, 32767));
    EXPECT_EQ(filtered(Samples(8, kMin), Samples(24, kMin), 8, 2), Samples(8, 32767));
}

TEST_P(PlainRoutines, FilterStepsThroughTheSignal) {
    Samples signal(321);
    for (size_t i = 0; i < signal.size(); ++i) signal[i] = static_cast<int16_t>(i);
    const Samples out = filtered({0, 32767, 0}, signal, 160, 2);
    EXPECT_EQ(out[1], 3);
    EXPECT_EQ(out[159], 319);
}

TEST_P(PlainRoutines, FilterRoundsHalvesUp) {
    EXPECT_EQ(filtered({16384}, {1, -1, 3, -3, 0, 0, 0, 0}, 5, 1), (Samples{1, 0, 2, -1, 0}));
}

TEST_P(PlainRoutines, FilterOfNothingWritesNothing) {
    Samples signal(8, 5), coeffs(8, 5), out(1, 99);
    (*engine.ComputeRFir)(signal.data(), coeffs.data(), out.data(), 7, 0, 1);
    EXPECT_EQ(out[0], 99);
}

TEST_P(PlainRoutines, ConvolutionWritesWholeBlocksOfEight) {
    const auto written = [](const std::vector<int32_t>& out) {
        return std::count(out.begin(), out.end(), 8);
    };
    const Samples ones(64, 1);
    EXPECT_EQ(written(convolved(ones, ones, 13, 8, 0, 0)), 16);
    EXPECT_EQ(written(convolved(ones, ones, 0, 8, 0, 0)), 8);
}

TEST_P(PlainRoutines, ConvolutionConsumesWholeStepsOfEightTaps) {
    const Samples ones(64, 1);
    EXPECT_EQ(convolved(ones, ones, 8, 5, 0, 0)[0], 8);
    EXPECT_EQ(convolved(ones, ones, 8, 0, 0, 0)[0], 8);
    EXPECT_EQ(convolved({1, 1, 1, 1, 1, 0, 0, 0}, ones, 8, 5, 0, 0)[0], 5);
}

TEST_P(PlainRoutines, ConvolutionWrapsIn32Bits) {
    EXPECT_EQ(convolved(Samples(8, kMin), Samples(16, kMin), 8, 8, 0, 0)[0], 0);
}

TEST_P(PlainRoutines, ConvolutionRoundsBeforeItShiftsRight) {
    const Samples signal = {3, -3, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    const auto out = convolved({1, 0, 0, 0, 0, 0, 0, 0}, signal, 8, 8, 1, 0);
    EXPECT_EQ(out[0], 2);
    EXPECT_EQ(out[1], -1);
}

TEST_P(PlainRoutines, ConvolutionShiftsLeftWithoutSaturation) {
    EXPECT_EQ(convolved({1, 0, 0, 0, 0, 0, 0, 0}, Samples(16, 3), 8, 8, 0, 31)[0], INT32_MIN);
}

TEST_P(PlainRoutines, InterpolationInterleavesItsPhases) {
    Samples signal(120), coeffs(3 * 5, 0), out(241, 99);
    for (size_t i = 0; i < signal.size(); ++i) signal[i] = static_cast<int16_t>(10 * i);
    for (size_t phase = 0; phase < 3; ++phase) coeffs[5 * phase + phase] = 32767;
    int16_t* next = signal.data();
    (*engine.Interp1toNCore)(80, 3, &next, out.data(), coeffs.data(), 5);
    EXPECT_EQ(Samples(out.begin(), out.begin() + 6), (Samples{0, 10, 20, 10, 20, 30}));
    EXPECT_EQ(out[239], 810);
    EXPECT_EQ(out[240], 99);
    EXPECT_EQ(next, signal.data() + 80);
}

TEST_P(PlainRoutines, InterpolationOfNothingLeavesTheSignalWhereItIs) {
    Samples signal(16, 5), coeffs(8, 5), out(1, 99);
    int16_t* next = signal.data();
    (*engine.Interp1toNCore)(0, 1, &next, out.data(), coeffs.data(), 8);
    EXPECT_EQ(out[0], 99);
    EXPECT_EQ(next, signal.data());
}

TEST_P(PlainRoutines, InterpolationSaturates) {
    Samples signal(16, kMin), coeffs(1, kMin), out(8, 99);
    int16_t* next = signal.data();
    (*engine.Interp1toNCore)(8, 1, &next, out.data(), coeffs.data(), 1);
    EXPECT_EQ(out, Samples(8, 32767));
}
