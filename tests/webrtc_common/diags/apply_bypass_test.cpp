// The two bypass switches that every applying pass sets.
#include "tests/webrtc_common/diags/bridge.h"

using namespace quill::test;

namespace {

class ApplyBypass : public Bridge {
  protected:
    void turn(const char* name, bool on) { root->getNode(name, true)->set<bool>(on); }
};

TEST_F(ApplyBypass, SetsBothAfterTheDiagnostics) {
    turn("aec_bypass", true);
    turn("noise_reduction_bypass", true);
    EXPECT_EQ((Lines{"SEDiagGetNumDiags()", "MMIfSetAecBypass(1)", "MMIfSetNoiseReductionBypass(1)"}),
              callsOf([&] { apply(); }));
}

TEST_F(ApplyBypass, SetsOneForTrueOnEveryPass) {
    turn("aec_bypass", true);
    turn("noise_reduction_bypass", false);
    apply();
    apply();
    EXPECT_EQ((Lines{"MMIfSetAecBypass(1)", "MMIfSetAecBypass(1)"}), engine.calls("MMIfSetAecBypass"));
    EXPECT_EQ((Lines{"MMIfSetNoiseReductionBypass(0)", "MMIfSetNoiseReductionBypass(0)"}),
              engine.calls("MMIfSetNoiseReductionBypass"));
}

TEST_F(ApplyBypass, MakesMissingNodesAndSetsFalse) {
    engine->set_aec_bypass(1);
    apply();
    EXPECT_EQ((Lines{"MMIfSetAecBypass(0)"}), engine.calls("MMIfSetAecBypass"));
    EXPECT_EQ("nothing", top("aec_bypass"));
    EXPECT_EQ("nothing", top("noise_reduction_bypass"));
    expected_assertions = {kReadOfNothing, kReadOfNothing};
}

// Unlike a diagnostic: the value in the tree is always set, even when the engine has changed its own.
TEST_F(ApplyBypass, OverridesTheEnginesOwnPosition) {
    publish();
    engine->set_aec_bypass(1);
    apply();
    EXPECT_EQ(0, engine->aec_bypass());
}

TEST_F(ApplyBypass, ReadsATextAsANumber) {
    root->getNode("aec_bypass", true)->set<std::string>("1");
    root->getNode("noise_reduction_bypass", true)->set<std::string>("true");
    apply();
    EXPECT_EQ(1, engine->aec_bypass());
    EXPECT_EQ(0u, engine->noise_reduction_bypass());
    expected_assertions = {failedConversion("true")};
}

TEST_F(ApplyBypass, LogsNothing) {
    turn("aec_bypass", true);
    turn("noise_reduction_bypass", true);
    EXPECT_EQ(Lines{}, recordsOf([&] { apply(); }));
}

class ApplyWithoutNoiseReductionBypass : public Bridge {
  protected:
    ApplyWithoutNoiseReductionBypass() : Bridge("test_engines/without_MMIfSetNoiseReductionBypass") {}
};

TEST_F(ApplyWithoutNoiseReductionBypass, SetsTheEchoBypassOnly) {
    root->getNode("aec_bypass", true)->set<bool>(true);
    EXPECT_EQ((Lines{"SEDiagGetNumDiags()", "MMIfSetAecBypass(1)"}), callsOf([&] { apply(); }));
    EXPECT_EQ((Lines{"SEDiagGetNumDiags()", "MMIfSetAecBypass(1)"}), callsOf([&] { apply(); }));
    EXPECT_FALSE(root->exists("noise_reduction_bypass"));
}

}  // namespace
