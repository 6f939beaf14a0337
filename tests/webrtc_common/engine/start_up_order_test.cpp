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

TEST(StartUpWithoutEnd, StartsAsTheOther) {
    const ScopedLogCapture no_load_notice(2);
    const StartableEngine started("test_engines/full", "sercv_gain_q10", "senr_echo_safety_factor");
    EXPECT_EQ("", tryInitSignalEssence());
    EXPECT_EQ(started.gain, g_diag_gain);
    EXPECT_EQ(started.echo_safety_factor, g_diag_echo_safety_factor);
    EXPECT_EQ(1, started.engine.count("MMIfSetReceivePathGainQ10"));
    EXPECT_EQ(&computeRFir, *ComputeRFir_FcnHook);
}

TEST(StartUpWithoutEnd, SaysWhatTheEngineDoesNotKnow) {
    const StartableEngine without_gain("test_engines/full", "gain");
    EXPECT_EQ("it knows no diagnostic RcvGainQ10 or sercv_gain_q10", tryInitSignalEssence());
    EXPECT_EQ(0, without_gain.engine.count("MMIfSetReceivePathGainQ10"));
    EXPECT_EQ(0, g_diag_gain);
}

TEST(StartUpWithoutEnd, NeedsBothDiagnostics) {
    const StartableEngine without_factor("test_engines/full", "RcvGainQ10", "factor");
    EXPECT_EQ("it knows no diagnostic senr_echo_safety_factor_q10 or senr_echo_safety_factor",
              tryInitSignalEssence());
    EXPECT_EQ(0, g_diag_gain);
}

}  // namespace
