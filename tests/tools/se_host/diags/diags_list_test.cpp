// `se_host diags list`: an engine's diagnostics.
#include <algorithm>

#include "tests/tools/se_host/diags/diags_test.h"

namespace se_host_test {
namespace {

using Json = nlohmann::ordered_json;

class DiagsList : public DiagsTest {
  protected:
    std::vector<std::string> names(Words more) {
        more.insert(more.begin(), {"list", "--json"});
        std::vector<std::string> names;
        for (const Json& diag : printedJson(more)) names.push_back(diag["name"]);
        return names;
    }
};

TEST_F(DiagsList, ShowsTypeAccessValueAndHelpBelowTheLevel) {
    const auto lines = linesOf(printed({"list", "seout_[gl]*"}));
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0], "basic");
    EXPECT_EQ(lines[1],
              "  seout_gain_q10    Int32        rw  1024                      Gain of the output, 1024 = 1");
    EXPECT_EQ(
        lines[2],
        "  seout_level_dbfs  Float32      r-  0.0                       Level of the last output block");
}

TEST_F(DiagsList, ShowsTheSameAsJson) {
    const Json list = printedJson({"list", "seout_gain_q10", "--json"});
    EXPECT_EQ(list, Json::parse(R"([{"name": "seout_gain_q10", "level": "basic",
        "path": "diags/basic/seout_gain_q10", "type": "Int32", "writable": true, "value": 1024,
        "help": "Gain of the output, 1024 = 1"}])"));
}

TEST_F(DiagsList, HoldsThoseOfAllLevels) {
    size_t count = 0;
    for (const char* level : {"basic", "intermediate", "advanced", "debug"}) {
        const auto of_level = names({"--level", level});
        EXPECT_FALSE(of_level.empty()) << level;
        count += of_level.size();
    }
    EXPECT_EQ(names({}).size(), count);
}

TEST_F(DiagsList, TakesThePatternOfAPathToo) {
    EXPECT_EQ(names({"diags/basic/*"}), names({"--level", "basic"}));
}

TEST_F(DiagsList, TakesLevelAndPatternTogether) {
    EXPECT_EQ(names({"sesys_*", "--level", "basic"}), std::vector<std::string>{"sesys_blocks"});
}

TEST_F(DiagsList, CutsALongValueInTheTableAlone) {
    EXPECT_NE(printed({"list", "mmfx_azimuth_deg"}).find(" [0,30,60,90,120,150,1... "), std::string::npos);
    EXPECT_EQ(printedJson({"list", "mmfx_azimuth_deg", "--json"})[0]["value"].size(), 12u);
}

TEST_F(DiagsList, ShowsValuesAfterARecording) {
    makeRecording(7);
    EXPECT_EQ(printedJson({"list", "sesys_blocks", "--json", "--recording", path("in.wav")})[0]["value"], 7);
}

TEST_F(DiagsList, ShowsTheValuesOfATuning) {
    writeTuning("a.json", {{"seout_gain_q10", 900}});
    EXPECT_EQ(printedJson({"list", "seout_gain_q10", "--json", "--tuning", path("a.json")})[0]["value"], 900);
}

TEST_F(DiagsList, ShowsWhatIsNotFiniteAsNull) {
    const Json list = printedJson({"list", "*not_*", "--json", "--engine", kOddEngine});
    ASSERT_EQ(list.size(), 2u);
    EXPECT_TRUE(list[0]["value"].is_null());
    EXPECT_EQ(list[1]["value"], Json::parse("[1.5, null, null]"));
}

TEST_F(DiagsList, OfNothingIsRefused) {
    for (const Words& words : {Words{"list", "x*"}, Words{"list", "x*", "--json"}}) {
        expectRefused(diags(words), kWrongUsage,
                      "no diagnostic matches 'x*'; 'se_host diags list' shows them");
    }
}

TEST_F(DiagsList, OfNothingAtThatLevelIsRefused) {
    expectRefused(diags({"list", "seout*", "--level", "intermediate"}), kWrongUsage,
                  "no diagnostic of level 'intermediate' matches 'seout*'; leave out --level");
}

TEST_F(DiagsList, OfNoLevelIsRefused) {
    expectRefused(diags({"list", "--level", "loud"}), kWrongUsage, "see 'se_host diags list --help'");
}

TEST_F(DiagsList, NeedsARecordingForAFarEnd) {
    expectRefused(diags({"list", "--far-end-channel", "0"}), kWrongUsage, "--recording");
}

TEST_F(DiagsList, NamesARecordingThatIsNotThere) {
    expectRefused(diags({"list", "--recording", path("in.wav")}), kFailure, "in.wav");
}

}  // namespace
}  // namespace se_host_test
