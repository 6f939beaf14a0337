// `se_host diags restore`: a tuning tried on an engine.
#include "tests/tools/se_host/diags/diags_test.h"

namespace se_host_test {
namespace {

using Json = nlohmann::ordered_json;

class DiagsRestore : public DiagsTest {
  protected:
    HostRun restore(Words more = {}) const {
        more.insert(more.begin(), {"restore", path("a.json")});
        return diags(more);
    }

    // The command ends with this status, prints these lines and the counts, and warns of this.
    void expectRestored(const HostRun& result, const std::string& out, const std::string& warnings,
                        int exit_code = 0) const {
        EXPECT_EQ(result.exit_code, exit_code);
        EXPECT_EQ(result.out, out);
        EXPECT_EQ(result.err, warnings);
    }

    std::string warning(const std::string& text) const {
        return "se_host: '" + path("a.json") + "'" + text + "\n";
    }
};

constexpr const char* kNothing = "0 changed, 32 kept for the record, 0 unknown, 0 refused\n";

TEST_F(DiagsRestore, OfWhatTheEngineHoldsChangesNothing) {
    dump("a.json");
    expectRestored(restore(), kNothing, "");
}

// Not even for values that no edit could set.
TEST_F(DiagsRestore, OfOddValuesChangesNothing) {
    dump("a.json", {"--engine", kOddEngine});
    EXPECT_EQ(restore({"--engine", kOddEngine}).out,
              "0 changed, 2 kept for the record, 0 unknown, 0 refused\n");
}

TEST_F(DiagsRestore, ShowsWhatChanges) {
    writeTuning("a.json", {{"seout_gain_q10", 900}, {"mmfx_look_mode", "2 - Narrow forward"}});
    Json tuning = readJson("a.json");
    tuning["switches"]["aec_bypass"] = true;
    writeJson("a.json", tuning);
    expectRestored(restore(),
                   "aec_bypass: false -> true\n"
                   "mmfx_look_mode: 0 - All directions -> 2 - Narrow forward\n"
                   "seout_gain_q10: 1024 -> 900\n"
                   "3 changed, 32 kept for the record, 0 unknown, 0 refused\n",
                   "");
}

TEST_F(DiagsRestore, KeepsWhatCannotBeWrittenForTheRecord) {
    writeTuning("a.json", {{"sesys_blocks", 5000}, {"semic_peak", {1, 2}}});
    expectRestored(restore(), kNothing, "");
}

// The file's "writable" is for the record only, too.
TEST_F(DiagsRestore, ShowsChangesOfWhatTheFileCallsReadOnly) {
    writeText("a.json", R"({"engine": {"build": "b", "version": "beam_1.14|reference"}, "diagnostics":
                            {"seout_gain_q10": {"writable": false, "value": 900}}})");
    expectRestored(restore(),
                   "seout_gain_q10: 1024 -> 900\n1 changed, 0 kept for the record, 0 unknown, 0 refused\n",
                   "");
}

TEST_F(DiagsRestore, ReportsUnknownNames) {
    writeTuning("a.json", {{"volume", 11}, {"bass\nboost", 3}});
    Json tuning = readJson("a.json");
    tuning["switches"]["kill_switch"] = true;
    writeJson("a.json", tuning);
    expectRestored(restore(), "0 changed, 32 kept for the record, 3 unknown, 0 refused\n",
                   warning(": the engine has no diagnostic 'volume'") +
                       warning(": the engine has no diagnostic 'bass boost'") +
                       warning(": the engine has no diagnostic 'kill_switch'"),
                   kSettingsDiffer);
    EXPECT_EQ(restore({"--lenient"}).exit_code, 0);
}

TEST_F(DiagsRestore, WarnsOfAnotherEngineVersion) {
    dump("a.json");
    Json tuning = readJson("a.json");
    tuning["engine"]["version"] = "older";
    writeJson("a.json", tuning);
    expectRestored(restore(), kNothing,
                   warning(" was made with engine version 'older', this is 'beam_1.14|reference'"));
}

TEST_F(DiagsRestore, RefusesSingleValuesAndAppliesTheOthers) {
    writeTuning("a.json", {{"seout_gain_q10", 900},
                           {"sent_blocks", 1e300},
                           {"mmfx_look_mode", "wide"},
                           {"mmfx_force_location_index", {1, 2}},
                           {"mmfx_bypass_location_search", true},
                           {"mmfx_switch_hold_blocks", 2000},
                           {"mmfx_rear_rejection_db", "loud"}});
    const HostRun result = restore();
    EXPECT_EQ(result.exit_code, kSettingsDiffer);
    EXPECT_EQ(result.out,
              "mmfx_switch_hold_blocks: 0 -> 1000\nseout_gain_q10: 1024 -> 900\n"
              "2 changed, 32 kept for the record, 0 unknown, 6 refused\n");
    EXPECT_EQ(result.errorLines(), 6u) << result.err;
    for (const char* why :
         {"'1e+300' is out of range for 'sent_blocks'", "'wide' is not a value for 'mmfx_look_mode'",
          "'[1,2]' is not a value for 'mmfx_force_location_index'",
          "'true' is not a value for 'mmfx_bypass_location_search'",
          "'loud' is not a value for 'mmfx_rear_rejection_db', which takes a number",
          "'mmfx_switch_hold_blocks' was set to '2000', but the engine holds '1000'"}) {
        EXPECT_NE(result.err.find(why), std::string::npos) << why << " in\n" << result.err;
    }
}

TEST_F(DiagsRestore, TakesAWholeNumberHoweverItIsWritten) {
    for (const Json& number : {Json(900.0), Json("900")}) {
        writeTuning("a.json", {{"seout_gain_q10", number}});
        EXPECT_EQ(linesOf(restore().out)[0], "seout_gain_q10: 1024 -> 900");
    }
}

TEST_F(DiagsRestore, AFileThatIsNotThereIsNamed) {
    expectRefused(restore(), kFailure,
                  "cannot read '" + path("a.json") + "': No such file or directory; give a tuning");
}

TEST_F(DiagsRestore, AFolderIsRefused) {
    noteFiles();
    expectRefused(diags({"restore", path("")}), kFailure,
                  "cannot read '" + path("") + "': it is a folder; give a tuning");
}

struct Broken {
    const char* name;
    const char* text;
    const char* why;
};

void PrintTo(const Broken& broken, std::ostream* out) {
    *out << broken.name;
}

class DiagsRestoreRefuses : public DiagsTest, public ::testing::WithParamInterface<Broken> {};

TEST_P(DiagsRestoreRefuses, AFileThatIsNoTuning) {
    writeText("a.json", GetParam().text);
    noteFiles();
    expectRefused(diags({"restore", path("a.json")}), kFailure,
                  "'" + path("a.json") + "' is not a tuning file: " + GetParam().why +
                      "; 'se_host diags dump' writes one");
}

#define ENGINE R"({"engine": {"build": "b", "version": "v"})"

INSTANTIATE_TEST_SUITE_P(
    Files, DiagsRestoreRefuses,
    ::testing::Values(
        Broken{"Blank", " ", "it is not JSON"}, Broken{"CutOff", "{", "it is not JSON"},
        Broken{"NumberBeyondAll", ENGINE R"(, "diagnostics": {"a": {"value": 1e999}}})", "it is not JSON"},
        Broken{"AList", "[]", "'engine' is missing"}, Broken{"ANumber", "7", "'engine' is missing"},
        Broken{"EngineANumber", R"({"engine": 7})", "'build' is missing"},
        Broken{"NoVersion", R"({"engine": {"build": "b"}})", "'version' is missing"},
        Broken{"VersionANumber", R"({"engine": {"build": "b", "version": 7}})", "'version' is not a text"},
        Broken{"NoDiagnostics", ENGINE "}", "'diagnostics' is missing"},
        Broken{"DiagnosticsAList", ENGINE R"(, "diagnostics": [1]})", "'diagnostics' holds no names"},
        Broken{"DiagnosticANumber", ENGINE R"(, "diagnostics": {"a": 7}})", "'a' has no 'value'"},
        Broken{"NoValue", ENGINE R"(, "diagnostics": {"a\nb": {"writable": true}}})", "'a b' has no 'value'"},
        Broken{"ValueAnObject", ENGINE R"(, "diagnostics": {"a": {"value": {}}}})",
               "the value of 'a' is not a number, a text or a list of them"},
        Broken{"ValueNested", ENGINE R"(, "diagnostics": {"a": {"value": [[1]]}}})",
               "the value of 'a' is not a number, a text or a list of them"},
        Broken{"SwitchesAList", ENGINE R"(, "diagnostics": {}, "switches": [true]})",
               "'switches' holds no names"},
        Broken{"SwitchAnObject", ENGINE R"(, "diagnostics": {}, "switches": {"aec_bypass": {}}})",
               "the value of 'aec_bypass' is not a number, a text or a list of them"}));

}  // namespace
}  // namespace se_host_test
