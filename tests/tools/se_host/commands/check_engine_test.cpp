// `se_host check-engine`: whether a new engine build can be used, before a host loads it.
#include <filesystem>
#include <nlohmann/json.hpp>

#include "tests/tools/se_host/host_test.h"
#include "webrtc_common/se_wrapper/table/engine_table.h"

namespace se_host_test {
namespace {

const std::string kSelibs = std::filesystem::path(SE_HOST_PATH).parent_path() / "selibs";

class CheckEngine : public HostTest {
  protected:
    HostRun check(const std::string& engine, std::vector<std::string> more = {}) {
        more.insert(more.begin(), {"check-engine", kSelibs + "/" + engine});
        return run(more);
    }

    nlohmann::json answer(const std::string& engine) {
        return nlohmann::json::parse(check(engine, {"--json"}).out);
    }

    // The exported name behind an entry point; null when there is none.
    nlohmann::json foundAs(const std::string& entry_point, const std::string& engine) {
        const nlohmann::json rows = answer(engine)["entry_points"];
        for (const auto& row : rows) {
            if (row["name"] == entry_point) return row["found_as"];
        }
        return nullptr;
    }
};

TEST_F(CheckEngine, FindsBothBuildsUsable) {
    for (const char* build : {"se_lib_beamv1.14", "se_lib_harborv006"}) {
        const HostRun result = check(build);
        expectDone(result);
        EXPECT_NE(result.out.find("\nverdict: can be used\n"), std::string::npos) << result.out;
    }
}

TEST_F(CheckEngine, ShowsEveryEntryPointInTheOrderOfLookingUp) {
    std::vector<std::string> expected, shown;
    for (const auto& row : quill::media::se_wrapper::kEngineRows) expected.push_back(row.variable);
    const nlohmann::json rows = answer("se_lib_beamv1.14")["entry_points"];
    for (const auto& row : rows) shown.push_back(row["name"]);
    EXPECT_EQ(shown, expected);
}

TEST_F(CheckEngine, ShowsUnderWhichNameAnEntryPointIsExported) {
    EXPECT_EQ(foundAs("InitDft_FcnHook", "se_lib_beamv1.14"), "InitDftFcnHook");
    EXPECT_EQ(foundAs("SEDiagGetInt40", "test_engines/full"), "SEDiagGetInt40");
    EXPECT_EQ(foundAs("SEDiagGetInt40", "test_engines/with_SEDiagGetInt64"), "SEDiagGetInt64");
}

TEST_F(CheckEngine, ShowsTheResultingCapabilities) {
    const auto all = answer("test_engines/full")["capabilities"];
    EXPECT_TRUE(all["beam_forming"]);
    EXPECT_TRUE(all["noise_tests"]);
    const auto none = answer("test_engines/minimal")["capabilities"];
    EXPECT_FALSE(none["beam_forming"]);
    EXPECT_FALSE(none["noise_tests"]);
}

TEST_F(CheckEngine, NamesTheFirstEntryPointThatIsMissing) {
    const HostRun result = check("test_engines/without_SEDiagGetName_and_SEDiagGetInt40");
    EXPECT_EQ(result.exit_code, kFailure);
    EXPECT_EQ(result.errorLines(), 1u);
    EXPECT_NE(result.err.find("symbol SEDiagGetInt40 is missing, and SEDiagGetInt64 too"), std::string::npos)
        << result.err;
    EXPECT_NE(result.out.find("MISSING"), std::string::npos) << result.out;
}

TEST_F(CheckEngine, NamesAGroupThatIsNotWhole) {
    const HostRun result = check("test_engines/noise_test_3");
    EXPECT_EQ(result.exit_code, kFailure);
    EXPECT_NE(result.err.find("only 2 of 3 entry points of the group 'noise test'"), std::string::npos)
        << result.err;
}

// The check accepts what the wrapper accepts, and refuses what it refuses.
TEST_F(CheckEngine, AgreesWithWhatTheWrapperDoes) {
    int refused = 0;
    for (const auto& entry : std::filesystem::directory_iterator(kSelibs + "/test_engines")) {
        const std::string name = "test_engines/" + entry.path().filename().string();
        const int loaded = run({"info", "--engine", name}).exit_code;
        EXPECT_EQ(check(name).exit_code, loaded) << name;
        if (loaded != 0) ++refused;
    }
    EXPECT_GT(refused, 50);
}

TEST_F(CheckEngine, NeedsAFile) {
    noteFiles();
    expectRefused(run({"check-engine", path("nothing")}), kWrongUsage, "nothing");
}

TEST_F(CheckEngine, AnswersInJsonAlsoWhenItCannotBeOpened) {
    writeText("text", "no library");
    for (const std::string& file : {path("text"), path("nothing")}) {
        const HostRun result = run({"check-engine", file, "--json"});
        EXPECT_EQ(result.errorLines(), 1u) << result.err;
        const nlohmann::json json = nlohmann::json::parse(result.out);
        EXPECT_EQ(json["usable"], false);
        EXPECT_EQ("se_host: " + json["objection"].get<std::string>() + "\n", result.err);
    }
}

TEST_F(CheckEngine, NeedsALibrary) {
    writeText("text", "no library");
    noteFiles();
    expectRefused(run({"check-engine", path("text")}), kFailure, "cannot be loaded");
}

TEST_F(CheckEngine, RefusesASymbolOfTheWrongKind) {
    for (const auto& [oddity, reason] :
         {std::pair("hook_is_a_function", "ComputeRFir is a function, not a variable"),
          std::pair("hook_is_a_constant", "ComputeRFir is a constant, not a variable"),
          std::pair("init_is_a_variable", "MMIfInit is data, not a function")}) {
        const HostRun result = check(std::string("test_engines/odd_") + oddity);
        EXPECT_EQ(result.exit_code, kFailure);
        EXPECT_NE(result.err.find(std::string("' cannot be used: symbol ") + reason), std::string::npos)
            << result.err;
    }
}

// A constructor that gives back the reference of the command itself.
TEST_F(CheckEngine, OutlivesAnEngineThatClosesItself) {
    expectDone(check("test_engines/odd_closes_itself_at_once"));
}

}  // namespace
}  // namespace se_host_test
