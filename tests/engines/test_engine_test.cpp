// The scriptable engine itself: the interface answers what a test has set, and calls are recorded.
#include "tests/engines/test_engine.h"

#include <gtest/gtest.h>

#include "webrtc_common/se_wrapper/engine/load.h"
#include "webrtc_common/se_wrapper/table/engine_table.h"

using namespace quill::media::se_wrapper;
using quill::test::TestEngine;
using Lines = std::vector<std::string>;

namespace {

class ScriptableEngine : public testing::Test {
  protected:
    ScriptableEngine() {
        openSignalEssenceDynamicLibrary("test_engines/full");
        engine_->clear_calls();
    }
    int add(int type, int length) { return engine_->add_diag("x", type, length, 3, 1, "help"); }

    TestEngine engine_;
};

TEST_F(ScriptableEngine, AnswersTheAttributesThatWereSet) {
    const int index = engine_->add_diag("gain_x", 4, 12, 2, 3, "what it does");
    EXPECT_EQ(1, SEDiagGetNumDiags());
    EXPECT_EQ(index, SEDiagGetIndex("gain_x"));
    EXPECT_STREQ("gain_x", SEDiagGetName(index));
    EXPECT_EQ(4, SEDiagGetType(index));
    EXPECT_EQ(12, SEDiagGetLen(index));
    EXPECT_EQ(2, SEDiagGetRW(index));
    EXPECT_EQ(3, SEDiagGetLevel(index));
    EXPECT_STREQ("what it does", SEDiagGetHelp(index));
}

TEST_F(ScriptableEngine, StoresTheValueOfASetter) {
    const int index = add(5, 1);
    SEDiagSetInt40(index, -(1LL << 39));
    EXPECT_EQ(-(1LL << 39), engine_->integer(index));
    SEDiagSetFloat32(index, 0.5f);
    EXPECT_EQ(0.5f, engine_->real(index));
}

TEST_F(ScriptableEngine, HandsOutElementsInTheTypeAskedFor) {
    const int index = add(1, 3);
    engine_->set_element(index, 2, -2);
    engine_->set_real_element(index, 1, 0.25f);
    EXPECT_EQ(-2, SEDiagGetInt16Array(index)[2]);
    EXPECT_EQ(65534, SEDiagGetUInt16Array(index)[2]);
    EXPECT_EQ(-2, SEDiagGetInt32Array(index)[2]);
    EXPECT_EQ(4294967294u, SEDiagGetUInt32Array(index)[2]);
    EXPECT_EQ(-2, SEDiagGetInt40Array(index)[2]);
    EXPECT_EQ(18446744073709551614u, SEDiagGetUInt40Array(index)[2]);
    EXPECT_EQ(0.25f, SEDiagGetFloat32Array(index)[1]);
}

TEST_F(ScriptableEngine, NamesTheValueOfAnEnum) {
    const int index = add(8, 1);
    engine_->set_label(index, 3, "Wide");
    SEDiagSetEnumAsInt(index, 3);
    EXPECT_EQ(3, SEDiagGetEnumAsInt(index));
    EXPECT_STREQ("Wide", SEDiagGetEnumAsString(index));
}

TEST_F(ScriptableEngine, AnswersNullWhenToldTo) {
    const int index = add(1, 3);
    engine_->set_null_answers(true);
    EXPECT_EQ(nullptr, MMIfGetVersionString());
    EXPECT_EQ(nullptr, MMIfGetNoiseTestResults_Optional());
    EXPECT_EQ(nullptr, SEDiagGet(index));
    EXPECT_EQ(nullptr, SEDiagGetName(index));
    EXPECT_EQ(nullptr, SEDiagGetHelp(index));
    EXPECT_EQ(nullptr, SEDiagGetEnumAsString(index));
    EXPECT_EQ(nullptr, SEDiagGetInt16Array(index));
    EXPECT_EQ(nullptr, SEDiagGetFloat32Array(index));
}

TEST_F(ScriptableEngine, RemembersCallsWithTheirArguments) {
    SEDiagSetFloat32(2, 0.5f);
    SEDiagGetIndex("name");
    MMIfSetManualLocation(3, -4);
    EXPECT_EQ((Lines{"SEDiagSetFloat32(2, 0.5)", "SEDiagGetIndex(name)", "MMIfSetManualLocation(3, -4)"}),
              engine_.calls());
}

TEST_F(ScriptableEngine, RemembersNothingWhileRecordingIsOff) {
    engine_->set_recording(false);
    MMIfGetAecBypass();
    EXPECT_EQ(0, engine_->num_calls());
}

TEST_F(ScriptableEngine, LetsATestActBeforeItAnswers) {
    engine_->set_callback(
        [](const char* call, void* context) {
            if (std::string(call) == "MMIfGetAecBypass()") {
                (*static_cast<TestEngine*>(context))->set_aec_bypass(7);
            }
        },
        &engine_);
    EXPECT_EQ(7, MMIfGetAecBypass());
}

TEST_F(ScriptableEngine, NotesWhatItsHooksHoldWhenItIsInitialised) {
    EXPECT_EQ(nullptr, engine_->hook_at_init("VCMul_i16"));
    MMIfInit(0);
    *VCMul_i16_FcnHook = nullptr;
    EXPECT_EQ(engine_->own_routine("VCMul_i16"), engine_->hook_at_init("VCMul_i16"));
}

TEST_F(ScriptableEngine, KeepsTheMicrophonesOfABlockAndGivesTheOutputThatWasSet) {
    std::vector<int16_t> rows(7 * kTestEngineBlock), output(kTestEngineBlock), result(kTestEngineBlock);
    for (std::size_t i = 0; i < rows.size(); ++i) rows[i] = static_cast<int16_t>(i);
    output.back() = 42;
    engine_->set_output(output.data());
    MMIfProcessMicrophones(rows.data(), rows.data() + kTestEngineBlock, result.data());
    EXPECT_EQ(rows,
              std::vector<int16_t>(engine_->microphones(), engine_->microphones() + 7 * kTestEngineBlock));
    EXPECT_EQ(kTestEngineBlock, engine_->microphone_distance());
    EXPECT_EQ(output, result);
}

TEST_F(ScriptableEngine, HoldsAHundredThousandDiagnostics) {
    engine_->set_recording(false);
    for (int i = 0; i < 100'000; ++i) engine_->add_diag(("d" + std::to_string(i)).c_str(), 1, 1, 3, 0, "");
    EXPECT_EQ(100'000, SEDiagGetNumDiags());
    EXPECT_EQ(99'999, SEDiagGetIndex("d99999"));
}

}  // namespace
