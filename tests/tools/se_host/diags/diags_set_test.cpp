// `se_host diags set`: edits of diagnostics.
#include "tests/tools/se_host/diags/diags_test.h"

namespace se_host_test {
namespace {

using Json = nlohmann::ordered_json;

class DiagsSet : public DiagsTest {
  protected:
    std::string set(Words words) const {
        words.insert(words.begin(), "set");
        return printed(words);
    }
};

TEST_F(DiagsSet, ShowsBeforeAndAfter) {
    EXPECT_EQ(set({"seout_gain_q10=900", "diags/intermediate/sent_blocks=300"}),
              "seout_gain_q10: 1024 -> 900\ndiags/intermediate/sent_blocks: 200 -> 300\n");
}

TEST_F(DiagsSet, TakesAFloat) {
    EXPECT_EQ(set({"mmfx_rear_rejection_db=12.1"}), "mmfx_rear_rejection_db: 0.0 -> 12.1\n");
}

TEST_F(DiagsSet, TakesAWholeNumberHoweverItIsWritten) {
    EXPECT_EQ(set({"seout_gain_q10=1.5e3", "seout_unmute_at_sample=2147483647"}),
              "seout_gain_q10: 1024 -> 1500\nseout_unmute_at_sample: 0 -> 2147483647\n");
}

TEST_F(DiagsSet, TakesAnEnumByItsNumberWithOrWithoutText) {
    for (const char* text : {"mmfx_look_mode=2", "mmfx_look_mode=2 - Narrow"}) {
        EXPECT_EQ(set({text}), "mmfx_look_mode: 0 - All directions -> 2 - Narrow forward\n");
    }
}

TEST_F(DiagsSet, TakesSwitchesInDigitsAndWords) {
    for (const char* on : {"aec_bypass=1", "aec_bypass=true"})
        EXPECT_EQ(set({on}), "aec_bypass: false -> true\n");
    EXPECT_EQ(set({"noise_reduction_bypass=true", "aec_bypass=false"}),
              "noise_reduction_bypass: false -> true\naec_bypass: false -> false\n");
}

TEST_F(DiagsSet, SavesTheTuningThatResults) {
    set({"seout_gain_q10=900", "aec_bypass=1", "--save", path("a.json")});
    const Json tuning = readJson("a.json");
    EXPECT_EQ(tuning["diagnostics"]["seout_gain_q10"]["value"], 900);
    EXPECT_EQ(tuning["diagnostics"]["sent_blocks"]["value"], 200);
    EXPECT_EQ(tuning["switches"]["aec_bypass"], true);
}

TEST_F(DiagsSet, StartsFromATuning) {
    set({"seout_gain_q10=900", "--save", path("a.json")});
    EXPECT_EQ(set({"seout_gain_q10=800", "--tuning", path("a.json")}), "seout_gain_q10: 900 -> 800\n");
}

TEST_F(DiagsSet, UpdatesATuningInPlace) {
    set({"seout_gain_q10=900", "--save", path("a.json")});
    set({"sent_blocks=300", "--tuning", path("a.json"), "--save", path("a.json")});
    const Json diagnostics = readJson("a.json")["diagnostics"];
    EXPECT_EQ(diagnostics["seout_gain_q10"]["value"], 900);
    EXPECT_EQ(diagnostics["sent_blocks"]["value"], 300);
    EXPECT_EQ(files(), std::vector<std::string>{"a.json"});
}

TEST_F(DiagsSet, ARefusalLeavesTheTuningThatWasToBeUpdated) {
    dump("a.json");
    const std::string before = readText("a.json");
    noteFiles();
    expectRefused(diags({"set", "seout_gain_q10=900", "volume=11", "--tuning", path("a.json"), "--save",
                         path("a.json")}),
                  kSettingsDiffer, "'volume'");
    EXPECT_EQ(readText("a.json"), before);
}

TEST_F(DiagsSet, ReportsWhereTheEngineHoldsAnotherValue) {
    const HostRun result = diags({"set", "seout_gain_q10=-1", "mmfx_look_mode=7", "sent_blocks=300"});
    EXPECT_EQ(result.exit_code, kSettingsDiffer);
    EXPECT_EQ(result.out,
              "seout_gain_q10: 1024 -> 0\nmmfx_look_mode: 0 - All directions -> 0 - All directions\n"
              "sent_blocks: 200 -> 300\n");
    EXPECT_EQ(result.err,
              "se_host: 'mmfx_look_mode' was set to '7', but the engine holds '0 - All directions'\n"
              "se_host: 'seout_gain_q10' was set to '-1', but the engine holds '0'\n");
}

TEST_F(DiagsSet, StrictSavesNothingWhereTheEngineHoldsAnotherValue) {
    const HostRun result = diags({"set", "seout_gain_q10=-1", "--save", path("a.json"), "--strict"});
    EXPECT_EQ(result.exit_code, kSettingsDiffer);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(files(), std::vector<std::string>{});
}

TEST_F(DiagsSet, LenientSetsWhatCanBeSet) {
    const HostRun result = diags({"set", "volume=11", "seout_gain_q10=-1", "sent_blocks=300", "--lenient"});
    EXPECT_EQ(result.exit_code, 0);
    EXPECT_EQ(result.out, "seout_gain_q10: 1024 -> 0\nsent_blocks: 200 -> 300\n");
    EXPECT_EQ(result.err,
              "se_host: the engine has no diagnostic 'volume'\n"
              "se_host: 'seout_gain_q10' was set to '-1', but the engine holds '0'\n");
}

TEST_F(DiagsSet, OfWhatIsNoAssignmentIsWrongUsage) {
    for (const char* words : {"sent_blocks", "=1"}) {
        expectRefused(diags({"set", words, "--save", path("a.json")}), kWrongUsage,
                      std::string("'") + words + "' is not an assignment; write NAME=VALUE");
    }
}

TEST_F(DiagsSet, OfASwitchThatTheEngineDoesNotHaveIsRefused) {
    expectRefused(diags({"set", "noise_reduction_bypass=1", "--engine", kOddEngine}), kSettingsDiffer,
                  "the engine has no switch 'noise_reduction_bypass'");
}

TEST_F(DiagsSet, ToAPlaceThatCannotBeWrittenIsRefused) {
    expectRefused(diags({"set", "sent_blocks=300", "--save", path("nowhere/a.json")}), kFailure,
                  "nowhere/a.json");
}

struct Refused {
    const char* assignment;
    const char* why;
};

void PrintTo(const Refused& refused, std::ostream* out) {
    *out << refused.assignment;
}

class DiagsSetRefuses : public DiagsTest, public ::testing::WithParamInterface<Refused> {};

// All or none: the edit before it is not saved either.
TEST_P(DiagsSetRefuses, WithAReasonAndWritesNothing) {
    expectRefused(diags({"set", "seout_gain_q10=900", GetParam().assignment, "--save", path("a.json")}),
                  kSettingsDiffer, GetParam().why);
}

INSTANTIATE_TEST_SUITE_P(
    Edits, DiagsSetRefuses,
    ::testing::Values(
        Refused{"volume=11", "the engine has no diagnostic 'volume'"},
        Refused{"sesys_blocks=1", "'sesys_blocks' is read-only"},
        Refused{"sent_state=1", "'sent_state' is read-only"},
        Refused{"semic_peak=1", "'semic_peak' is an array; arrays can only be read"},
        Refused{"mmfx_look_mode=wide",
                "'wide' is not a value for 'mmfx_look_mode', which takes a whole number"},
        Refused{"sent_blocks=1.5", "'1.5' is not a value for 'sent_blocks', which takes a whole number"},
        Refused{"sent_blocks=", "'' is not a value for 'sent_blocks'"},
        Refused{"sent_blocks=3x", "'3x' is not a value for 'sent_blocks'"},
        Refused{"sent_blocks=-1", "'-1' is out of range for 'sent_blocks', which takes 0 to 4294967295"},
        Refused{"mmfx_force_location_index=32768",
                "'32768' is out of range for 'mmfx_force_location_index', which takes -32768 to 32767"},
        Refused{"mmfx_bypass_location_search=65536", "which takes 0 to 65535"},
        Refused{"seout_unmute_at_sample=2147483648", "which takes -2147483648 to 2147483647"},
        Refused{"mmfx_search_gate_energy=-1", "which takes 0 to 2147483647"},
        Refused{"mmfx_rear_rejection_db=nan", "which takes a number"},
        Refused{"mmfx_rear_rejection_db=1e39", "'1e39' is out of range for 'mmfx_rear_rejection_db'"},
        Refused{"mmfx_rear_rejection_db=1e999", "'1e999' is not a value for 'mmfx_rear_rejection_db'"},
        Refused{"aec_bypass=2", "\"aec_bypass\" takes 0 or 1, not \"2\""},
        Refused{"aec_bypass=on", "\"aec_bypass\" takes 0 or 1, not \"on\""}));

}  // namespace
}  // namespace se_host_test
