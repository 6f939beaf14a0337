// Tuning files while sound runs.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "tests/host/library/opened_host.h"

namespace se_host_library_test {
namespace {

class LiveTuning : public ::testing::Test {
  protected:
    LiveTuning() : folder_(::testing::TempDir() + "live_tuning_" + std::to_string(::getpid()) + "/") {
        std::filesystem::create_directories(folder_);
        number = scripted.add("number", kInt16);
        other = scripted.add("other", kInt16);
    }
    ~LiveTuning() override { std::filesystem::remove_all(folder_); }

    std::string tuning(const std::string& diagnostics) const {
        const std::string path = folder_ + "tuning.json";
        std::ofstream(path)
            << R"({"engine": {"build": "full", "version": "test_engine_1.0"}, "diagnostics": {)"
            << diagnostics << "}}";
        return path;
    }

    static std::string textOf(const std::string& path) {
        std::ostringstream text;
        text << std::ifstream(path).rdbuf();
        return text.str();
    }

    std::string folder_;
    ScriptedEngine scripted;
    int number, other;
};

TEST_F(LiveTuning, IsPostedAndApplied) {
    const Opened host("test_engines/full");
    const std::string path = tuning(R"("number": {"value": 3}, "other": {"value": -4})");
    EXPECT_EQ(se_host_load_tuning(host, path.c_str(), nullptr, 0), SE_HOST_OK);
    host.run(2);
    EXPECT_EQ(scripted.engine->integer(number), 3);
    EXPECT_EQ(scripted.engine->integer(other), -4);
}

TEST_F(LiveTuning, SaysTheFirstThatCannotBeAndAppliesTheRest) {
    const Opened host("test_engines/full");
    const std::string path = tuning(R"("number": {"value": 70000}, "other": {"value": 5})");
    char why[300];
    EXPECT_EQ(se_host_load_tuning(host, path.c_str(), why, sizeof(why)), SE_HOST_DIFFERS);
    EXPECT_EQ(why, "'" + path + "': '70000' is out of range for 'number', which takes -32768 to 32767");
    host.run(2);
    EXPECT_EQ(scripted.engine->integer(other), 5);
    EXPECT_EQ(scripted.engine->integer(number), 0);
}

TEST_F(LiveTuning, ATuningWithoutRoomChangesNothing) {
    const Opened host("test_engines/full");
    for (int i = 1; i < SE_HOST_MOST_EDITS; ++i) ASSERT_EQ(host.set("number", std::to_string(i)), SE_HOST_OK);
    const std::string path = tuning(R"("number": {"value": 3}, "other": {"value": 4})");
    EXPECT_EQ(se_host_load_tuning(host, path.c_str(), nullptr, 0), SE_HOST_FULL);
    EXPECT_EQ(host.get("other"), "0");
    EXPECT_EQ(host.get("number"), "1023");
}

TEST_F(LiveTuning, RefusesAFileThatIsNone) {
    const Opened host("test_engines/full");
    char why[300];
    EXPECT_EQ(se_host_load_tuning(host, (folder_ + "none").c_str(), why, sizeof(why)), SE_HOST_BAD_FILE);
    EXPECT_NE(std::string(why).find("'" + folder_ + "none'"), std::string::npos) << why;
}

TEST_F(LiveTuning, IsWrittenWithTheValuesOfNow) {
    const Opened host("test_engines/full");
    host.set("number", "12");
    host.run(2);
    scripted.engine->set_integer(other, 34);
    host.run();
    const std::string path = folder_ + "out.json";
    ASSERT_EQ(se_host_save_tuning(host, path.c_str(), nullptr, 0), SE_HOST_OK);
    scripted.engine->set_integer(other, 0);
    host.set("number", "0");
    host.run(2);
    ASSERT_EQ(se_host_load_tuning(host, path.c_str(), nullptr, 0), SE_HOST_OK);
    host.run(2);
    EXPECT_EQ(scripted.engine->integer(number), 12);
    EXPECT_EQ(scripted.engine->integer(other), 34);
}

TEST_F(LiveTuning, AFileThatCannotBeWrittenIsToldAndTheOldOneStays) {
    const Opened host("test_engines/full");
    const std::string path = folder_ + "no_such_folder/out.json";
    char why[300];
    EXPECT_EQ(se_host_save_tuning(host, path.c_str(), why, sizeof(why)), SE_HOST_BAD_FILE);
    EXPECT_NE(std::string(why).find(path), std::string::npos) << why;
}

}  // namespace
}  // namespace se_host_library_test
