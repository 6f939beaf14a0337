// `se_host diags dump`: a whole tuning as JSON.
#include "tests/tools/se_host/diags/diags_test.h"

namespace se_host_test {
namespace {

using Json = nlohmann::ordered_json;

class DiagsDump : public DiagsTest {};

TEST_F(DiagsDump, GoesToStandardOutputOrToAFile) {
    const Json tuning = printedJson({"dump"});
    EXPECT_EQ(printed({"dump", path("a.json")}),
              "wrote " + path("a.json") + ": " + std::to_string(tuning["diagnostics"].size()) +
                  " diagnostics of " + tuning["engine"]["version"].get<std::string>() + "\n");
    EXPECT_EQ(readJson("a.json"), tuning);
    EXPECT_EQ(files(), std::vector<std::string>{"a.json"});
}

TEST_F(DiagsDump, HoldsEveryDiagnosticWithTypeAndAccess) {
    const Json tuning = printedJson({"dump"});
    EXPECT_EQ(tuning["diagnostics"].size(), printedJson({"list", "--json"}).size());
    EXPECT_EQ(tuning["diagnostics"]["seout_gain_q10"],
              Json::parse(R"({"type": "Int32", "writable": true, "value": 1024})"));
    EXPECT_EQ(tuning["diagnostics"]["semic_peak"],
              Json::parse(R"({"type": "Int16[7]", "writable": false, "value": [0,0,0,0,0,0,0]})"));
    EXPECT_EQ(tuning["switches"], Json::parse(R"({"aec_bypass": false, "noise_reduction_bypass": false})"));
}

TEST_F(DiagsDump, NamesTheEngine) {
    EXPECT_EQ(printedJson({"dump", "--device-model"})["engine"]["build"], "se_lib_harborv006");
}

TEST_F(DiagsDump, HoldsTheValuesAfterARecording) {
    makeRecording(5);
    const Json tuning = printedJson({"dump", "--recording", path("in.wav")});
    EXPECT_EQ(tuning["diagnostics"]["sesys_blocks"]["value"], 5);
}

TEST_F(DiagsDump, HoldsNullForWhatIsNotFiniteAndForSwitchesThatAreNotThere) {
    const Json tuning = printedJson({"dump", "--engine", kOddEngine});
    EXPECT_TRUE(tuning["diagnostics"]["not_a_number"]["value"].is_null());
    EXPECT_EQ(tuning["diagnostics"]["some_not_finite"]["value"], Json::parse("[1.5, null, null]"));
    EXPECT_EQ(tuning["diagnostics"]["large"]["value"], 5000000000);
    EXPECT_TRUE(tuning["switches"]["noise_reduction_bypass"].is_null());
}

TEST_F(DiagsDump, UpdatesATuningInPlace) {
    writeText("a.json", R"({"engine": {"build": "b", "version": "beam_1.14|reference"}, "diagnostics":
                            {"seout_gain_q10": {"value": 900}}})");
    dump("a.json", {"--tuning", path("a.json")});
    EXPECT_EQ(readJson("a.json")["diagnostics"]["seout_gain_q10"]["value"], 900);
    EXPECT_EQ(readJson("a.json")["diagnostics"]["sent_blocks"]["value"], 200);
}

TEST_F(DiagsDump, OverTheRecordingIsRefused) {
    makeRecording(5);
    noteFiles();
    expectRefused(diags({"dump", path("in.wav"), "--recording", path("in.wav")}), kWrongUsage, "in.wav");
    EXPECT_EQ(readSound(path("in.wav")).frames(), 800u);
}

TEST_F(DiagsDump, ThatFailsLeavesAnOlderOneAlone) {
    writeText("a.json", "old");
    noteFiles();
    expectRefused(diags({"dump", path("a.json"), "--recording", path("nothing.wav")}), kFailure,
                  "nothing.wav");
    EXPECT_EQ(readText("a.json"), "old");
}

}  // namespace
}  // namespace se_host_test
