// The order of the start-up.
#include <gtest/gtest.h>

#include "tests/support/log_capture.h"
#include "tests/webrtc_common/engine/startable_engine.h"
#include "webrtc_common/se_wrapper.h"

using namespace quill::media::se_wrapper;
using quill::test::ScopedLogCapture;
using quill::test::StartableEngine;

namespace {

const std::vector<std::string> kStartUpCalls = {
    "MMIfInit(0)",
    "SEDiagGetIndex(RcvGainQ10)",
    "SEDiagGetIndex(senr_echo_safety_factor_q10)",
    "MMIfLookInAllDirectionsIncludingRear()",
    "MMIfSetReceivePathGainQ10(1024)",
    "MMIfGetVersionString()",
};

template <class Routine>
void* address(Routine routine) {
    return reinterpret_cast<void*>(routine);
}

TEST(StartUp, CallsTheEngineInItsOrder) {
    const ScopedLogCapture no_load_notice(2);
    const StartableEngine started;
    started.engine->clear_calls();
    initSignalEssence();
    EXPECT_EQ(kStartUpCalls, started.engine.calls());
}

TEST(StartUp, KeepsTheEnginesRoutinesAside) {
    const StartableEngine started;
    initSignalEssence();
    EXPECT_EQ(started.engine->own_routine("ComputeRFir"), address(computeRFir_SE));
}

TEST(SecondStartUp, LoadsNothingAndRepeatsTheRest) {
    const StartableEngine started;
    initSignalEssence();
    const ScopedLogCapture log;
    *ComputeRFir_FcnHook = nullptr;
    started.engine->clear_calls();
    initSignalEssence();
    EXPECT_EQ(kStartUpCalls, started.engine.calls());
    EXPECT_EQ(&computeRFir, *ComputeRFir_FcnHook);
    EXPECT_TRUE(log.records().empty());
}

// Kept on purpose: nothing guards the saved routines against a second call.
TEST(SecondStartUp, KeepsTheWrappersRoutinesAsideInsteadOfTheEngines) {
    const StartableEngine started;
    initSignalEssence();
    initSignalEssenceOptimForTests();
    EXPECT_EQ(&interp1ToNCore, interp1toNCore_SE);
    EXPECT_EQ(&aecConvolution, aecConvolution_SE);
    EXPECT_EQ(&computeRFir, computeRFir_SE);
    EXPECT_EQ(&vcmul_i16, vcmul_i16_SE);
}

}  // namespace
