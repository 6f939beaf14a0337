// Settings by text: what there is, what is refused, and how an edit reaches the engine.
#include <gtest/gtest.h>

#include "tests/host/library/opened_host.h"

namespace se_host_library_test {
namespace {

class HostSettings : public ::testing::Test {
  protected:
    HostSettings() {
        number = scripted.add("number", kInt16);
        real = scripted.add("real", kFloat32);
        choice = scripted.add("choice", kEnum);
        engine->set_label(choice, 0, "Wide");
        engine->set_label(choice, 2, "Narrow");
        fixed = scripted.add("fixed", kInt32, 1, kReadOnly);
        array = scripted.add("array", kInt16, 3);
    }

    long long inEngine(int diag) const { return engine->integer(diag); }

    ScriptedEngine scripted;
    quill::test::TestEngine& engine = scripted.engine;
    int number, real, choice, fixed, array;
};

TEST_F(HostSettings, AnEditReachesTheEngineAtTheNextBlock) {
    const Opened host("test_engines/full");
    ASSERT_EQ(host.set("number", "900"), SE_HOST_OK);
    EXPECT_EQ(host.get("number"), "900");
    EXPECT_EQ(inEngine(number), 0);
    host.run(2);
    EXPECT_EQ(inEngine(number), 900);
    EXPECT_EQ(host.get("number"), "900");
    EXPECT_EQ(host.health().edits_applied, 1U);
}

TEST_F(HostSettings, NameAndPathAreTheSame) {
    const Opened host("test_engines/full");
    host.set("diags/basic/number", "7");
    host.run(2);
    EXPECT_EQ(inEngine(number), 7);
    EXPECT_EQ(host.get("diags/basic/number"), "7");
}

TEST_F(HostSettings, EveryTypeOfValue) {
    const Opened host("test_engines/full");
    host.set("real", "0.25");
    host.set("choice", "2");
    host.set("aec_bypass", "1");
    host.set("noise_reduction_bypass", "1");
    host.run(3);
    EXPECT_EQ(engine->real(real), 0.25f);
    EXPECT_EQ(inEngine(choice), 2);
    EXPECT_EQ(engine->aec_bypass(), 1);
    EXPECT_EQ(engine->noise_reduction_bypass(), 1U);
    EXPECT_EQ(host.get("real"), "0.25");
    EXPECT_EQ(host.get("choice"), "2 - Narrow");
    EXPECT_EQ(host.get("aec_bypass"), "1");
    EXPECT_EQ(host.get("noise_reduction_bypass"), "1");
}

TEST_F(HostSettings, TheLimitsOfEveryIntegerType) {
    struct Limit {
        const char* name;
        Type type;
        const char* lowest;
        const char* highest;
        long long low, high;
    };
    const Limit limits[] = {{"i16", kInt16, "-32768", "32767", -32768, 32767},
                            {"u16", kUInt16, "0", "65535", 0, 65535},
                            {"i32", kInt32, "-2147483648", "2147483647", INT32_MIN, INT32_MAX},
                            {"u32", kUInt32, "0", "4294967295", 0, UINT32_MAX},
                            {"i40", kInt40, "-2147483648", "2147483647", INT32_MIN, INT32_MAX},
                            {"u40", kUInt40, "0", "2147483647", 0, INT32_MAX}};
    std::vector<int> diags;
    for (const Limit& limit : limits) diags.push_back(scripted.add(limit.name, limit.type));
    const Opened host("test_engines/full");
    for (size_t i = 0; i < std::size(limits); ++i) {
        host.set(limits[i].name, limits[i].highest);
        host.run(2);
        EXPECT_EQ(inEngine(diags[i]), limits[i].high) << limits[i].name;
        EXPECT_EQ(host.get(limits[i].name), limits[i].highest);
        host.set(limits[i].name, limits[i].lowest);
        host.run(2);
        EXPECT_EQ(inEngine(diags[i]), limits[i].low) << limits[i].name;
        EXPECT_EQ(host.get(limits[i].name), limits[i].lowest);
    }
}

TEST_F(HostSettings, ARefusalSaysWhyAndChangesNothing) {
    const Opened host("test_engines/full");
    struct Refusal {
        const char* name;
        const char* value;
        se_host_status_t status;
        const char* why;
    };
    for (const Refusal& refusal : {
             Refusal{"nothing", "1", SE_HOST_UNKNOWN, "the engine has no diagnostic 'nothing'"},
             Refusal{"fixed", "1", SE_HOST_REFUSED, "'fixed' is read-only"},
             Refusal{"array", "1", SE_HOST_REFUSED, "'array' is an array; arrays can only be read"},
             Refusal{"number", "loud", SE_HOST_REFUSED,
                     "'loud' is not a value for 'number', which takes a whole number"},
             Refusal{"number", "40000", SE_HOST_REFUSED,
                     "'40000' is out of range for 'number', which takes -32768 to 32767"},
             Refusal{"aec_bypass", "2", SE_HOST_REFUSED, "\"aec_bypass\" takes 0 or 1, not \"2\""},
             Refusal{"location", "2", SE_HOST_REFUSED, "'location' is read-only"},
         }) {
        EXPECT_EQ(host.set(refusal.name, refusal.value), refusal.status);
        EXPECT_EQ(host.whyNot(refusal.name, refusal.value), refusal.why);
    }
    engine->clear_calls();
    host.run(2);
    EXPECT_EQ(scripted.engine.count("SEDiagSetInt16"), 0);
    EXPECT_EQ(host.get("number"), "0");
}

TEST_F(HostSettings, AnUnchangedValueIsNoEdit) {
    const Opened host("test_engines/full");
    engine->clear_calls();
    host.set("number", "0");
    host.run(2);
    EXPECT_EQ(scripted.engine.count("SEDiagSetInt16"), 0);
    EXPECT_EQ(host.health().edits_applied, 0U);
}

TEST_F(HostSettings, SeveralEditsOfOneValueAllArrive) {
    const Opened host("test_engines/full");
    engine->clear_calls();
    for (const char* value : {"1", "2", "3", "4", "5", "6"}) EXPECT_EQ(host.set("number", value), SE_HOST_OK);
    host.run(1);
    EXPECT_EQ(inEngine(number), 4);  // four a block
    host.run(1);
    EXPECT_EQ(inEngine(number), 6);
    EXPECT_EQ(scripted.engine.count("SEDiagSetInt16"), 6);
    EXPECT_EQ(host.health().edits_dropped, 0U);
}

TEST_F(HostSettings, WhenTheEngineHasMovedTooItsValueStays) {
    const Opened host("test_engines/full");
    host.set("number", "900");
    engine->set_integer(number, 5);
    host.run(1);
    EXPECT_EQ(inEngine(number), 5);
    EXPECT_EQ(host.get("number"), "5");
    EXPECT_EQ(host.health().edits_dropped, 1U);
    EXPECT_EQ(host.health().edits_applied, 0U);
    EXPECT_EQ(
        host.advice(),
        "1 edits were dropped, because the engine had changed the same values; read them and try again");
}

TEST_F(HostSettings, AFullQueueIsAnErrorAndLosesNothing) {
    const Opened host("test_engines/full");
    int taken = 0;
    while (host.set("number", std::to_string(taken + 1)) == SE_HOST_OK) ++taken;
    EXPECT_EQ(taken, SE_HOST_MOST_EDITS);
    EXPECT_EQ(host.set("number", "31000"), SE_HOST_FULL);
    EXPECT_EQ(host.whyNot("number", "31000"),
              "no room for 'number': 1024 edits wait for the next blocks; try again after some");
    EXPECT_EQ(host.get("number"), "1024");
    host.run(1);
    EXPECT_EQ(host.set("number", "31000"), SE_HOST_OK);
    host.run(SE_HOST_MOST_EDITS / 4 + 1);
    EXPECT_EQ(inEngine(number), 31000);
}

void throwAtEdits(const char* call, void* /*context*/) {
    if (std::string(call).rfind("SEDiagSet", 0) == 0) throw 7;
}

TEST_F(HostSettings, AnEngineThatThrowsAtEditsDropsThemAndGivesTheirPlacesBack) {
    const Opened host("test_engines/full");
    engine->set_callback(throwAtEdits, nullptr);
    for (int edit = 1; edit <= SE_HOST_MOST_EDITS + 10; ++edit) {
        ASSERT_EQ(host.set("number", std::to_string(edit)), SE_HOST_OK) << edit;
        host.run(1);
    }
    EXPECT_EQ(host.health().failed_blocks, SE_HOST_MOST_EDITS + 10U);
    EXPECT_EQ(host.health().edits_dropped, SE_HOST_MOST_EDITS + 10U);
    engine->set_callback(nullptr, nullptr);
    EXPECT_EQ(host.set("number", "31000"), SE_HOST_OK);
    host.run(1);
    EXPECT_EQ(inEngine(number), 31000);
}

TEST_F(HostSettings, TheListHasEverySetting) {
    const Opened host("test_engines/full");
    std::vector<std::string> names;
    for (size_t place = 0; place < se_host_setting_count(host); ++place) {
        se_host_setting_t setting{};
        setting.size = sizeof(setting);
        ASSERT_EQ(se_host_setting(host, place, &setting), SE_HOST_OK);
        names.emplace_back(setting.name);
    }
    EXPECT_EQ(names, (std::vector<std::string>{"RcvGainQ10", "senr_echo_safety_factor_q10", "number", "real",
                                               "choice", "fixed", "array", "aec_bypass",
                                               "noise_reduction_bypass", "location", "location_conf"}));
    se_host_setting_t setting{};
    setting.size = sizeof(setting);
    se_host_setting(host, 2, &setting);
    EXPECT_STREQ(setting.path, "diags/basic/number");
    EXPECT_STREQ(setting.type, "Int16");
    EXPECT_STREQ(setting.help, "help");
    EXPECT_EQ(setting.elements, 1U);
    EXPECT_EQ(setting.writable, 1);
    EXPECT_EQ(setting.lowest, -32768);
    EXPECT_EQ(setting.highest, 32767);
    se_host_setting(host, 6, &setting);
    EXPECT_EQ(setting.elements, 3U);
    EXPECT_EQ(setting.writable, 0);
    EXPECT_EQ(se_host_setting(host, se_host_setting_count(host), &setting), SE_HOST_BAD_ARGUMENT);
}

TEST_F(HostSettings, ADiagnosticMayHaveTheNameOfASwitch) {
    const int diag = scripted.add("aec_bypass", kInt16);
    const Opened host("test_engines/full");
    host.set("aec_bypass", "1");
    host.set("diags/basic/aec_bypass", "7");
    host.run(2);
    EXPECT_EQ(engine->aec_bypass(), 1);
    EXPECT_EQ(inEngine(diag), 7);
    EXPECT_EQ(host.get("aec_bypass"), "1");
    EXPECT_EQ(host.get("diags/basic/aec_bypass"), "7");
}

}  // namespace
}  // namespace se_host_library_test
