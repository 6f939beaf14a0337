// `se_host diags diff`: the differences between two tunings.
#include "tests/tools/se_host/diags/diags_test.h"

namespace se_host_test {
namespace {

using Json = nlohmann::ordered_json;

class DiagsDiff : public DiagsTest {
  protected:
    std::string diff() const { return printed({"diff", path("a.json"), path("b.json")}); }
};

TEST_F(DiagsDiff, OfATuningWithItself) {
    dump("a.json");
    EXPECT_EQ(printed({"diff", path("a.json"), path("a.json")}), "no difference\n");
}

TEST_F(DiagsDiff, KnowsADiagnosticFromTheSwitchOfItsName) {
    writeTuning("a.json", {{"aec_bypass", 1}});
    Json tuning = readJson("a.json");
    tuning["switches"]["aec_bypass"] = false;
    writeJson("a.json", tuning);
    EXPECT_EQ(printed({"diff", path("a.json"), path("a.json")}), "no difference\n");
}

TEST_F(DiagsDiff, ShowsValuesSwitchesAndTheVersion) {
    dump("a.json");
    writeTuning("b.json", {{"seout_gain_q10", 900}, {"semic_peak", {1, 2}}, {"seout_level_dbfs", nullptr}});
    Json tuning = readJson("b.json");
    tuning["engine"]["version"] = "older";
    tuning["switches"]["aec_bypass"] = true;
    writeJson("b.json", tuning);
    EXPECT_EQ(diff(),
              "engine version: beam_1.14|reference -> older\n"
              "aec_bypass: false -> true\n"
              "semic_peak: [0,0,0,0,0,0,0] -> [1,2]\n"
              "seout_gain_q10: 1024 -> 900\n"
              "seout_level_dbfs: 0.0 -> none\n");
}

TEST_F(DiagsDiff, ShowsNamesThatAreInOneOnly) {
    writeTuning("a.json", {{"volume", 11}});
    writeTuning("b.json", {{"bass\nboost", 3}});
    EXPECT_EQ(diff(), "only in " + path("a.json") + ": volume\nonly in " + path("b.json") + ": bass boost\n");
}

TEST_F(DiagsDiff, ShowsOneLineForATextOfMany) {
    writeTuning("a.json", {{"mmfx_look_mode", "a\nb"}});
    dump("b.json");
    EXPECT_EQ(diff(), "mmfx_look_mode: a b -> 0 - All directions\n");
}

TEST_F(DiagsDiff, NamesTheFileThatIsNoTuning) {
    dump("a.json");
    writeText("b.json", "{}");
    noteFiles();
    expectRefused(diags({"diff", path("a.json"), path("b.json")}), kFailure,
                  "'" + path("b.json") + "' is not a tuning file: 'engine' is missing");
}

TEST_F(DiagsDiff, NeedsTwo) {
    expectRefused(diags({"diff", path("a.json")}), kWrongUsage, "B.json is required");
}

}  // namespace
}  // namespace se_host_test
