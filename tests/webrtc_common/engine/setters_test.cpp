// Receive gain and echo safety factor: how they are found and set.
#include <gtest/gtest.h>

#include "tests/support/log_capture.h"
#include "tests/webrtc_common/engine/startable_engine.h"
#include "webrtc_common/se_wrapper.h"

using namespace quill::media::se_wrapper;
using quill::test::kInt16;
using quill::test::kInt32;
using quill::test::StartableEngine;

namespace {

std::string setInt16Call(int index, int value) {
    return "SEDiagSetInt16(" + std::to_string(index) + ", " + std::to_string(value) + ")";
}

TEST(DiagIndices, AreZeroBeforeStartUp) {
    EXPECT_EQ(0, g_diag_gain);
    EXPECT_EQ(0, g_diag_echo_safety_factor);
}

TEST(Gain, IsWrittenUnchangedToTheDiagFoundAsRcvGainQ10) {
    const StartableEngine started;
    initSignalEssence();
    EXPECT_EQ(started.gain, g_diag_gain);
    started.engine->clear_calls();
    setGain(512);
    EXPECT_EQ(std::vector{setInt16Call(started.gain, 512)}, started.engine.calls());
}

TEST(Gain, IsWrittenToTheDiagWithTheOtherName) {
    const StartableEngine started("test_engines/full", "sercv_gain_q10");
    initSignalEssence();
    started.engine->clear_calls();
    setGain(512);
    EXPECT_EQ(std::vector{setInt16Call(started.gain, 512)}, started.engine.calls());
}

TEST(EchoSafetyFactor, IsWrittenUnchanged) {
    const StartableEngine started;
    initSignalEssence();
    EXPECT_EQ(started.echo_safety_factor, g_diag_echo_safety_factor);
    started.engine->clear_calls();
    setEchoSafetyFactor(-7);
    EXPECT_EQ(std::vector{setInt16Call(started.echo_safety_factor, -7)}, started.engine.calls());
}

TEST(EchoSafetyFactor, IsNotConvertedForTheDiagThatIsNotInQ10) {
    const StartableEngine started("test_engines/full", "RcvGainQ10", "senr_echo_safety_factor");
    initSignalEssence();
    started.engine->clear_calls();
    setEchoSafetyFactor(2048);
    EXPECT_EQ(std::vector{setInt16Call(started.echo_safety_factor, 2048)}, started.engine.calls());
}

TEST(StartUp, EndsTheProcessWhenTheGainHasNoKnownName) {
    const StartableEngine started("test_engines/full", "gain");
    EXPECT_FATAL_RECORD_ANY_LINE(initSignalEssence(), "se_wrapper", "webrtc_common/se_wrapper",
                                 "Could not find Signal Essence Diags: RcvGainQ10,sercv_gain_q10");
}

TEST(StartUp, EndsTheProcessWhenTheEchoSafetyFactorHasNoKnownName) {
    const StartableEngine started("test_engines/full", "RcvGainQ10", "factor");
    EXPECT_FATAL_RECORD_ANY_LINE(
        initSignalEssence(), "se_wrapper", "webrtc_common/se_wrapper",
        "Could not find Signal Essence Diags: senr_echo_safety_factor_q10,senr_echo_safety_factor");
}

TEST(Setters, UseTheInt16SetterWhateverTheDiagsType) {
    const StartableEngine started;
    started.engine->set_type(started.gain, kInt32);
    initSignalEssence();
    started.engine->clear_calls();
    setGain(1024);
    EXPECT_EQ(std::vector{setInt16Call(started.gain, 1024)}, started.engine.calls());
}

}  // namespace
