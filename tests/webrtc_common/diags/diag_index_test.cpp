// Finding a diagnostic that engine builds name differently.
#include <gtest/gtest.h>

#include "tests/engines/test_engine.h"
#include "tests/support/log_capture.h"
#include "webrtc_common/se_wrapper/diags/catalogue.h"
#include "webrtc_common/se_wrapper/engine/load.h"
#include "webrtc_common/se_wrapper/records.h"

using namespace quill::media::se_wrapper;
using quill::test::TestEngine;
using Lines = std::vector<std::string>;

namespace {

class DiagIndex : public testing::Test {
  protected:
    DiagIndex() {
        openSignalEssenceDynamicLibrary("test_engines/full");
        engine_->add_diag("first of the catalogue", 1, 1, 3, 0, "");
        engine_->clear_calls();
    }
    int add(const char* name) { return engine_->add_diag(name, 1, 1, 3, 0, ""); }

    TestEngine engine_;
};

TEST_F(DiagIndex, IsThatOfTheSecondNameWhenOnlyThatIsKnown) {
    const int b = add("b");
    EXPECT_EQ(b, getDiagIndexOrDie({"a", "b"}));
    EXPECT_EQ((Lines{"SEDiagGetIndex(a)", "SEDiagGetIndex(b)"}), engine_.calls());
}

TEST_F(DiagIndex, IsThatOfTheFirstNameWithoutAskingForTheSecond) {
    add("b");
    const int a = add("a");
    EXPECT_EQ(a, getDiagIndexOrDie({"a", "b"}));
    EXPECT_EQ((Lines{"SEDiagGetIndex(a)"}), engine_.calls());
}

TEST_F(DiagIndex, MayBeZero) {
    EXPECT_EQ(0, getDiagIndexOrDie({"first of the catalogue", "b"}));
    EXPECT_EQ(1, engine_.count("SEDiagGetIndex"));
}

TEST_F(DiagIndex, TakesAnyNegativeAnswerForUnknown) {
    engine_->set_unknown_name_answer(INT32_MIN);
    const int b = add("b");
    EXPECT_EQ(b, getDiagIndexOrDie({"a", "b"}));
}

TEST_F(DiagIndex, StopsTheProcessWhenNoNameIsKnown) {
    EXPECT_FATAL_RECORD_ANY_LINE(getDiagIndexOrDie({"a", "b"}), "se_wrapper", SE_WRAPPER_SOURCE,
                                 "Could not find Signal Essence Diags: a,b");
}

TEST_F(DiagIndex, StopsTheProcessNamingASingleNameWithoutSeparator) {
    EXPECT_FATAL_RECORD_ANY_LINE(getDiagIndexOrDie({"senr_echo_safety_factor"}), "se_wrapper",
                                 SE_WRAPPER_SOURCE,
                                 "Could not find Signal Essence Diags: senr_echo_safety_factor");
}

TEST_F(DiagIndex, StopsTheProcessForAnEmptyList) {
    EXPECT_FATAL_RECORD_ANY_LINE(getDiagIndexOrDie({}), "se_wrapper", SE_WRAPPER_SOURCE,
                                 "Could not find Signal Essence Diags: ");
}

// Kept on purpose: the caller then works on diagnostic 0.
TEST_F(DiagIndex, IsZeroWhenNoNameIsKnownAndFatalRecordsAreDropped) {
    quill::setLogThreshold("se_wrapper", 0);
    EXPECT_EQ(0, getDiagIndexOrDie({"a", "b"}));
    EXPECT_EQ((Lines{"SEDiagGetIndex(a)", "SEDiagGetIndex(b)"}), engine_.calls());
}

TEST_F(DiagIndex, LogsNothingWhenANameIsKnown) {
    const quill::test::ScopedLogCapture capture(5);
    add("b");
    getDiagIndexOrDie({"a", "b"});
    EXPECT_TRUE(capture.records().empty());
}

}  // namespace
