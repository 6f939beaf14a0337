// Applying a user's edits: which value is kept, and what is left alone.
#include <cmath>

#include "tests/webrtc_common/diags/bridge.h"
#include "tests/webrtc_common/diags/tree_watch.h"

using namespace quill::test;

namespace {

class Apply : public Bridge {
  protected:
    // A writable Int32 with the value 5 in node, mark and engine.
    int addAgreed() {
        const int index = add(kInt32);
        engine->set_integer(index, 5);
        publish();
        return index;
    }
    Lines settings() { return engine.calls("SEDiagSetInt32"); }
};

TEST_F(Apply, SendsAnEditWhileTheEngineValueIsUnchanged) {
    addAgreed();
    node()->set<int>(7);
    EXPECT_EQ((Lines{"User changed x to 7"}), recordsOf([&] { apply(); }));
    EXPECT_EQ((Lines{"SEDiagSetInt32(0, 7)"}), settings());
    EXPECT_EQ("int32 7", mark());
    EXPECT_EQ("int32 7", value());
}

TEST_F(Apply, DoesNothingInASecondPass) {
    addAgreed();
    node()->set<int>(7);
    apply();
    EXPECT_EQ((Lines{"SEDiagGetNumDiags()", "SEDiagGetLen(0)", "SEDiagGetRW(0)", "SEDiagGetName(0)",
                     "SEDiagGetLevel(0)", "SEDiagGetType(0)", "MMIfSetAecBypass(0)",
                     "MMIfSetNoiseReductionBypass(0)"}),
              callsOf([&] { apply(); }));
    EXPECT_EQ(Lines{}, recordsOf([&] { apply(); }));
}

TEST_F(Apply, LetsTheEngineWinWhenBothHaveMoved) {
    const int index = addAgreed();
    node()->set<int>(7);
    engine->set_integer(index, 6);
    EXPECT_EQ(Lines{}, recordsOf([&] { apply(); }));
    EXPECT_EQ(Lines{}, settings());
    EXPECT_EQ("int32 7", value());
    EXPECT_EQ("int32 5", mark());
    publish();
    EXPECT_EQ("int32 6", value());
    EXPECT_EQ("int32 6", mark());
}

TEST_F(Apply, LeavesAMoveOfTheEngineToThePublishingPass) {
    engine->set_integer(addAgreed(), 6);
    apply();
    EXPECT_EQ(Lines{}, settings());
    EXPECT_EQ("int32 5", value());
    EXPECT_EQ("int32 5", mark());
}

TEST_F(Apply, LeavesTheMarkWhenBothHaveMovedToTheSameValue) {
    const int index = addAgreed();
    node()->set<int>(6);
    engine->set_integer(index, 6);
    apply();
    EXPECT_EQ(Lines{}, settings());
    EXPECT_EQ("int32 5", mark());
}

TEST_F(Apply, SendsAnEditThatAPublishingPassHasSeenFirst) {
    addAgreed();
    node()->set<int>(7);
    publish();
    apply();
    EXPECT_EQ((Lines{"SEDiagSetInt32(0, 7)"}), settings());
}

TEST_F(Apply, DoesNotSendAnEditThatWasUndone) {
    addAgreed();
    node()->set<int>(7);
    node()->set<int>(5);
    apply();
    EXPECT_EQ(Lines{}, settings());
}

TEST_F(Apply, LeavesNothingForThePublishingPassToChange) {
    addAgreed();
    node()->set<int>(7);
    apply();
    const TreeWatch watch(root);
    EXPECT_EQ((Lines{"diags/basic/x"}), recordsOf([&] { publish(); }));
    EXPECT_EQ(0, watch.changes());
}

TEST_F(Apply, PublishesWhatTheEngineMadeOfAnEdit) {
    const int index = addAgreed();
    node()->set<int>(70);
    apply();
    engine->set_integer(index, 50);  // the largest that it accepts
    publish();
    EXPECT_EQ("int32 50", value());
    EXPECT_EQ("int32 50", mark());
}

TEST_F(Apply, NeverSendsAnEditOfAReadOnlyDiagnostic) {
    const int index = add(kInt32, "x", kReadOnly);
    engine->set_integer(index, 5);
    publish();
    node()->set<int>(7);
    apply();
    publish();
    EXPECT_EQ(Lines{}, settings());
    EXPECT_EQ("int32 7", value()) << "kept while the engine stands still";
    engine->set_integer(index, 6);
    publish();
    EXPECT_EQ("int32 6", value());
}

TEST_F(Apply, TestsTheWriteBitOnly) {
    for (const int rw : {1, 2, 4, 7}) add(kInt32, ("rw_" + std::to_string(rw)).c_str(), rw);
    publish();
    for (const int rw : {1, 2, 4, 7}) node("rw_" + std::to_string(rw))->set<int>(9);
    apply();
    EXPECT_EQ((Lines{"SEDiagSetInt32(1, 9)", "SEDiagSetInt32(3, 9)"}), settings());
}

TEST_F(Apply, NeverReadsTheNodeOfAnArray) {
    addArray(kInt32, 2);
    publish();
    node()->set<std::string>("7");
    EXPECT_EQ((Lines{"SEDiagGetNumDiags()", "SEDiagGetLen(0)", "MMIfSetAecBypass(0)",
                     "MMIfSetNoiseReductionBypass(0)"}),
              callsOf([&] { apply(); }));
    EXPECT_EQ("nothing", mark());
}

TEST_F(Apply, MakesNoNodeForAnArrayOrAReadOnlyDiagnostic) {
    addArray(kInt32, 2, "array");
    add(kInt32, "read_only", kReadOnly);
    apply();
    EXPECT_FALSE(root->exists("diags"));
    expected_assertions = {kReadOfNothing, kReadOfNothing};
}

TEST_F(Apply, TakesALengthOfZeroOrLessForASingleValue) {
    addArray(kInt32, 0, "zero");
    addArray(kInt32, -7, "negative");
    publish();
    node("zero")->set<int>(5);
    node("negative")->set<int>(6);
    apply();
    EXPECT_EQ((Lines{"SEDiagSetInt32(0, 5)", "SEDiagSetInt32(1, 6)"}), settings());
}

TEST_F(Apply, MakesEveryWritableScalarsNodeInATreeThatWasNeverPublished) {
    for (int type = kInt16; type <= kEnum; ++type) {
        const int index = add(type, ("type_" + std::to_string(type)).c_str());
        engine->set_integer(index, 5);
        engine->set_real(index, 5);
    }
    apply();
    for (int type = kInt16; type <= kEnum; ++type) {
        const std::string name = "type_" + std::to_string(type);
        EXPECT_TRUE(root->exists(path(name)));
        EXPECT_EQ("nothing", value(name));
        const quill::PropertyNodeData::SharedDataLock lock(node(name).get(), nullptr);
        EXPECT_EQ(nullptr, lock->metadata) << "no help, no mark, no empty entry";
    }
    for (const std::string& call : engine.calls()) EXPECT_NE(0u, call.find("SEDiagSet")) << call;
    EXPECT_EQ(1, engine.count("MMIfSetAecBypass"));
    EXPECT_EQ((Lines{"MMIfSetAecBypass(0)"}), engine.calls("MMIfSetAecBypass"));
    expected_assertions = Lines(8 + 2, kReadOfNothing);  // each type and both bypasses
}

// A node without a mark compares against zero.
TEST_F(Apply, SendsAnEditWithoutAMarkWhileTheEngineHoldsZero) {
    add(kInt32, "at_zero");
    engine->set_integer(add(kInt32, "elsewhere"), 5);
    node("at_zero")->set<int>(7);
    node("elsewhere")->set<int>(7);
    apply();
    EXPECT_EQ((Lines{"SEDiagSetInt32(0, 7)"}), settings());
    EXPECT_EQ("int32 7", mark("at_zero"));
    EXPECT_EQ("nothing", mark("elsewhere"));
    expected_assertions = {kReadOfNothing, kReadOfNothing};  // the bypasses
}

TEST_F(Apply, TakesNoValueOfAnUnknownType) {
    add(0, "none");
    add(9, "above");
    publish();
    node("none")->set<int>(7);
    node("above")->set<int>(7);
    EXPECT_EQ((Lines{"SEDiagGetNumDiags()", "SEDiagGetLen(0)", "SEDiagGetRW(0)", "SEDiagGetName(0)",
                     "SEDiagGetLevel(0)", "SEDiagGetType(0)", "SEDiagGetLen(1)", "SEDiagGetRW(1)",
                     "SEDiagGetName(1)", "SEDiagGetLevel(1)", "SEDiagGetType(1)", "MMIfSetAecBypass(0)",
                     "MMIfSetNoiseReductionBypass(0)"}),
              callsOf([&] { apply(); }));
}

TEST_F(Apply, FindsTheNodeAtEachLevel) {
    for (const int level : {-1, 0, 1, 2, 3, 4}) {
        engine->add_diag(("level_" + std::to_string(level)).c_str(), kInt32, 1, kReadWrite, level, "");
    }
    publish();
    for (const char* edited : {"diags/basic/level_-1", "diags/basic/level_0", "diags/intermediate/level_1",
                               "diags/advanced/level_2", "diags/debug/level_3", "diags/debug/level_4"}) {
        root->getNode(edited, true)->set<int>(7);
    }
    apply();
    EXPECT_EQ(6u, settings().size());
}

TEST_F(Apply, SendsEditsInTheOrderOfTheIndexes) {
    for (const char* name : {"c", "a", "b"}) add(kInt32, name);
    publish();
    for (const char* name : {"a", "b", "c"}) node(name)->set<int>(7);
    apply();
    EXPECT_EQ((Lines{"SEDiagSetInt32(0, 7)", "SEDiagSetInt32(1, 7)", "SEDiagSetInt32(2, 7)"}), settings());
}

TEST_F(Apply, LeavesTheLocationAlone) {
    publish();
    root->getNode("location", true)->set<int>(3);
    root->getNode("location_conf", true)->set<int>(4);
    EXPECT_EQ((Lines{"SEDiagGetNumDiags()", "MMIfSetAecBypass(0)", "MMIfSetNoiseReductionBypass(0)"}),
              callsOf([&] { apply(); }));
    EXPECT_EQ("int32 3", top("location"));
    EXPECT_EQ("int32 4", top("location_conf"));
}

}  // namespace
