// An engine that answers null wherever it returns a pointer: nothing is thrown and nothing is read.
#include "tests/webrtc_common/diags/bridge.h"
#include "webrtc_common/se_wrapper/table/engine_table.h"

using namespace quill::media::se_wrapper;
using namespace quill::test;

namespace {

constexpr const char* kUnnamed = "(null)";

class NullAnswers : public Bridge {
  protected:
    explicit NullAnswers(const std::string& build = "test_engines/full") : Bridge(build) {
        engine->set_null_answers(true);
    }
};

TEST_F(NullAnswers, PutADiagnosticAtAPathOfItsOwn) {
    EXPECT_EQ("diags/basic/(null)", getDiagPropertyName(add(kInt32)));
}

TEST_F(NullAnswers, MakeTheHelpOfANewNodeEmpty) {
    add(kInt32);
    publish();
    EXPECT_EQ("string ", meta("help", kUnnamed));
}

TEST_F(NullAnswers, LeaveTheValueOfAScalar) {
    engine->set_integer(add(kInt32), 5);
    publish();
    EXPECT_EQ("int32 5", value(kUnnamed));
    EXPECT_EQ("int32 5", mark(kUnnamed));
}

TEST_F(NullAnswers, AreShownAsTheLabelOfAnEnum) {
    engine->set_integer(add(kEnum), 3);
    publish();
    EXPECT_EQ("string 3 - (null)", value(kUnnamed));
    EXPECT_EQ("int32 3", mark(kUnnamed));
}

class NullArray : public NullAnswers, public testing::WithParamInterface<int> {};

TEST_P(NullArray, HasNoElements) {
    addArray(GetParam(), 3);
    publish();
    EXPECT_EQ("string [  ]", value(kUnnamed));
}

INSTANTIATE_TEST_SUITE_P(OfType, NullArray,
                         testing::Range(static_cast<int>(kInt16), static_cast<int>(kEnum)));

TEST_F(NullAnswers, AreNamedInTheTraceOfPublishing) {
    engine->set_integer(add(kInt32), 5);
    EXPECT_EQ((Lines{"diags/basic/(null)", "Updating (null) to 5"}), recordsOf([&] { publish(); }));
}

TEST_F(NullAnswers, AreNamedInTheTraceOfApplying) {
    add(kInt32);
    publish();
    node(kUnnamed)->set<int>(7);
    EXPECT_EQ((Lines{"User changed (null) to 7"}), recordsOf([&] { apply(); }));
    EXPECT_EQ(7, engine->integer(0));
}

class NullRecords : public NullAnswers {
  protected:
    NullRecords() : NullAnswers("test_engines/without_SEDiagGetHelp_and_SEDiagGetLevel") {}
};

TEST_F(NullRecords, HaveLevelZeroAndNoHelp) {
    engine->set_record(add(kInt32), 2, "the record's text");
    EXPECT_EQ(0, SEDiagGetLevel(0));
    EXPECT_EQ(nullptr, SEDiagGetHelp(0));
}

TEST_F(NullRecords, ArePublishedAsBasicWithEmptyHelp) {
    engine->set_record(add(kInt32), 2, "the record's text");
    publish();
    EXPECT_EQ("string ", meta("help", kUnnamed));
}

}  // namespace
