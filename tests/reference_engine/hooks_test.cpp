// The engine calls its inner routines through its hook variables.
#include "tests/reference_engine/engine_under_test.h"
#include "tests/reference_engine/signals.h"

using namespace reference_engine_test;

namespace {

ComputeRFirRoutine* g_filter = nullptr;
Interp1toNRoutine* g_interpolate = nullptr;
int g_filter_calls = 0;
int g_interpolate_calls = 0;

void countedFilter(int16_t* signal, int16_t* coeffs, int16_t* out, uint16_t order, uint16_t num_out,
                   uint16_t step) {
    ++g_filter_calls;
    g_filter(signal, coeffs, out, order, num_out, step);
}

void countedInterpolation(uint16_t num_in, uint16_t factor, int16_t** signal, int16_t* out, int16_t* coeffs,
                          uint16_t num_taps) {
    ++g_interpolate_calls;
    g_interpolate(num_in, factor, signal, out, coeffs, num_taps);
}

FwdDftRoutine* g_forward = nullptr;
InvDftRoutine* g_backward = nullptr;
VCMulRoutine* g_multiply = nullptr;
int g_forward_calls = 0;
int g_backward_calls = 0;
int g_multiply_calls = 0;

void countedForward(DftObj_t* object, int16_t* in, uint16_t type, uint16_t scale, int16_t* out,
                    uint16_t len) {
    ++g_forward_calls;
    g_forward(object, in, type, scale, out, len);
}

uint16_t countedBackward(DftObj_t* object, int16_t* in, uint16_t type, uint16_t scale, int16_t* out,
                         uint16_t len) {
    ++g_backward_calls;
    return g_backward(object, in, type, scale, out, len);
}

void countedProduct(int16_t* a, int16_t* b, int16_t* out, uint16_t n) {
    ++g_multiply_calls;
    g_multiply(a, b, out, n);
}

class Hooks : public testing::TestWithParam<Build> {
  protected:
    Hooks() : engine(GetParam()) {}
    EngineUnderTest engine;
};
INSTANTIATE_FOR_EACH_BUILD(Hooks);

}  // namespace

TEST_P(Hooks, HoldRoutinesFromTheStart) {
    EXPECT_NE(*engine.ComputeRFir, nullptr);
    EXPECT_NE(*engine.AecConvolution, nullptr);
    EXPECT_NE(*engine.VCMul_i16, nullptr);
    EXPECT_NE(*engine.Interp1toNCore, nullptr);
    EXPECT_NE(*engine.InitDftFcnHook, nullptr);
    EXPECT_NE(*engine.FwdDftFcnHook, nullptr);
    EXPECT_NE(*engine.InvDftFcnHook, nullptr);
}

TEST_P(Hooks, FilterEveryMicrophoneAndTheFarEnd) {
    g_filter = *engine.ComputeRFir;
    *engine.ComputeRFir = countedFilter;
    engine.MMIfInit(0);
    engine.processAlike(Samples(10 * kBlock, 0));
    EXPECT_EQ(g_filter_calls, 80);
}

// With the robust weights of the look direction and of another one, and with the difference of the sharp ones to them.
TEST_P(Hooks, SteerEveryMicrophone) {
    g_interpolate = *engine.Interp1toNCore;
    *engine.Interp1toNCore = countedInterpolation;
    engine.MMIfInit(0);
    engine.processAlike(Samples(10 * kBlock, 0));
    EXPECT_EQ(g_interpolate_calls, 10 * 7 * 4);
}

TEST_P(Hooks, TransformAndWeighTheBeamOnceABlock) {
    g_forward = *engine.FwdDftFcnHook;
    g_backward = *engine.InvDftFcnHook;
    g_multiply = *engine.VCMul_i16;
    *engine.FwdDftFcnHook = countedForward;
    *engine.InvDftFcnHook = countedBackward;
    *engine.VCMul_i16 = countedProduct;
    engine.MMIfInit(0);
    engine.processAlike(Samples(10 * kBlock, 0));
    EXPECT_EQ(g_forward_calls, 10);
    EXPECT_EQ(g_backward_calls, 10);
    EXPECT_EQ(g_multiply_calls, 10);
}
