// Opening: which engine, and every refusal as a line of text in a process that goes on.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>

#include "common/logging.h"
#include "tests/host/library/opened_host.h"

namespace se_host_library_test {
namespace {

constexpr const char* kReference = "se_lib_beamv1.14";

std::string folderOfEngines() {
    return std::filesystem::path(enginePath(kReference)).parent_path();
}

class OpenHost : public ::testing::Test {
  protected:
    OpenHost() : folder_(::testing::TempDir() + "open_host_" + std::to_string(::getpid()) + "/") {
        std::filesystem::create_directories(folder_);
    }
    ~OpenHost() override { std::filesystem::remove_all(folder_); }

    std::string file(const std::string& name, const std::string& text) const {
        std::ofstream(folder_ + name) << text;
        return folder_ + name;
    }

    std::string folder_;
};

TEST_F(OpenHost, WithoutOptionsTakesTheBuildBesideTheProgram) {
    const Opened host("");
    EXPECT_EQ(host.status(), SE_HOST_OK) << host.why();
    EXPECT_EQ(host.why(), "");
    EXPECT_STREQ(se_host_engine_build(host), kReference);
    EXPECT_STRNE(se_host_engine_version(host), "");
}

TEST_F(OpenHost, TakesTheBuildOfTheDeviceModel) {
    const Opened host("", [](se_host_options_t& options) { options.device_model = 1; });
    EXPECT_STREQ(se_host_engine_build(host), "se_lib_harborv006");
}

TEST_F(OpenHost, TakesABuildByItsName) {
    const Opened host("", [](se_host_options_t& options) { options.engine = "se_lib_harborv006"; });
    EXPECT_STREQ(se_host_engine_build(host), "se_lib_harborv006");
}

TEST_F(OpenHost, TakesABuildByItsPath) {
    const std::string copy = folder_ + "my_engine";
    std::filesystem::copy_file(enginePath(kReference), copy);
    const Opened host("", [&](se_host_options_t& options) { options.engine = copy.c_str(); });
    EXPECT_EQ(host.status(), SE_HOST_OK) << host.why();
    EXPECT_STREQ(se_host_engine_build(host), "my_engine");
}

TEST_F(OpenHost, TakesTheChosenBuildOfAFolder) {
    std::filesystem::copy_file(enginePath(kReference), folder_ + kReference);
    const Opened host("", [&](se_host_options_t& options) { options.folder = folder_.c_str(); });
    EXPECT_EQ(host.status(), SE_HOST_OK) << host.why();
    EXPECT_STREQ(se_host_engine_build(host), kReference);
}

TEST_F(OpenHost, SaysWhichEnginesThereAre) {
    const Opened host("", [](se_host_options_t& options) { options.engine = "no_such_engine"; });
    EXPECT_EQ(host.status(), SE_HOST_BAD_ENGINE);
    EXPECT_EQ(host, nullptr);
    EXPECT_EQ(host.why(), "no engine 'no_such_engine' (" + folderOfEngines() +
                              "/no_such_engine); choose one of: se_lib_beamv1.14, se_lib_harborv006");
}

TEST_F(OpenHost, RefusesAFileThatIsNoEngine) {
    const std::string text = file("text", "not an engine");
    const Opened host("", [&](se_host_options_t& options) { options.engine = text.c_str(); });
    EXPECT_EQ(host.status(), SE_HOST_BAD_ENGINE);
    EXPECT_EQ(host.why().rfind("engine 'text' cannot be loaded (", 0), 0U) << host.why();
}

TEST_F(OpenHost, RefusesAnEngineWithoutAnEntryPoint) {
    const Opened host("test_engines/without_MMIfInit");
    EXPECT_EQ(host.status(), SE_HOST_BAD_ENGINE);
    EXPECT_EQ(
        host.why(),
        "engine 'without_MMIfInit' cannot be used: symbol MMIfInit is missing; ask for a complete build");
}

TEST_F(OpenHost, RefusesAnEngineWithoutAReceiveGain) {
    quill::test::TestEngine engine;
    const Opened host("test_engines/full");
    EXPECT_EQ(host.status(), SE_HOST_BAD_ENGINE);
    EXPECT_EQ(host.why(),
              "engine 'full' cannot be used: it knows no diagnostic RcvGainQ10 or sercv_gain_q10; ask for a "
              "complete build");
}

TEST_F(OpenHost, RefusesAnotherRateAndSaysWhoResamples) {
    const Opened host("", [](se_host_options_t& options) { options.sample_rate = 48000; });
    EXPECT_EQ(host.status(), SE_HOST_BAD_ARGUMENT);
    EXPECT_EQ(host.why(),
              "the engine works at 16000 Hz, not at 48000; resample before and after it, as the sound server "
              "or 'se_host process' do");
}

TEST_F(OpenHost, RefusesAChannelThatCannotBe) {
    for (const int32_t channel : {-2, 1024}) {
        const Opened host("", [&](se_host_options_t& options) { options.microphones[3] = channel; });
        EXPECT_EQ(host.status(), SE_HOST_BAD_ARGUMENT);
        EXPECT_EQ(host.why(), "a channel is from 0 to 1023, or -1 for none");
    }
}

TEST_F(OpenHost, RefusesASecondHandle) {
    const Opened first("");
    const Opened second("");
    EXPECT_EQ(second.status(), SE_HOST_IN_USE);
    EXPECT_EQ(second.why(), "this process has an open handle; close it first");
    first.run();  // goes on
    EXPECT_EQ(first.health().blocks, 1U);
}

TEST_F(OpenHost, RefusesAnotherEngineAfterTheFirst) {
    Opened first("se_lib_beamv1.14");
    ASSERT_EQ(first.status(), SE_HOST_OK);
    first.close();
    const Opened second("se_lib_harborv006");
    EXPECT_EQ(second.status(), SE_HOST_IN_USE);
    EXPECT_EQ(second.why(), "this process has loaded " + enginePath("se_lib_beamv1.14") +
                                ", and an engine stays loaded; use another process for " +
                                enginePath("se_lib_harborv006"));
    const Opened again("se_lib_beamv1.14");
    EXPECT_EQ(again.status(), SE_HOST_OK) << again.why();
}

TEST_F(OpenHost, ARefusedEngineDoesNotKeepOthersOut) {
    const Opened refused("test_engines/without_MMIfInit");
    ASSERT_EQ(refused.status(), SE_HOST_BAD_ENGINE);
    const Opened host("");
    EXPECT_EQ(host.status(), SE_HOST_OK) << host.why();
}

TEST_F(OpenHost, AClosedHandleOpensAgainAsNew) {
    const Sound sound(16000);
    std::vector<int16_t> first;
    {
        const Opened host(kReference);
        first = process(host, sound, 160);
        host.set("seout_gain_q10", "100");
        host.run();
    }
    const Opened host(kReference);
    ASSERT_EQ(host.status(), SE_HOST_OK) << host.why();
    EXPECT_EQ(process(host, sound, 160), first);
}

TEST_F(OpenHost, TakesATuning) {
    const std::string tuning = folder_ + "tuning.json";
    {
        const Opened host(kReference);
        host.set("seout_gain_q10", "321");
        host.run();
        ASSERT_EQ(se_host_save_tuning(host, tuning.c_str(), nullptr, 0), SE_HOST_OK);
    }
    const Opened host(kReference, [&](se_host_options_t& options) { options.tuning = tuning.c_str(); });
    EXPECT_EQ(host.status(), SE_HOST_OK) << host.why();
    EXPECT_EQ(host.get("seout_gain_q10"), "321");
}

TEST_F(OpenHost, SaysWhatOfATuningTheEngineDoesNotHold) {
    const std::string tuning =
        file("tuning.json", R"({"engine": {"build": "b", "version": "v"}, "diagnostics":
        {"seout_gain_q10": {"value": 321}, "no_such": {"value": 1}}})");
    const Opened host(kReference, [&](se_host_options_t& options) { options.tuning = tuning.c_str(); });
    EXPECT_EQ(host.status(), SE_HOST_DIFFERS);
    EXPECT_EQ(host.why(), "'" + tuning + "': the engine has no diagnostic 'no_such'");
    EXPECT_EQ(host.get("seout_gain_q10"), "321");
}

TEST_F(OpenHost, RefusesATuningThatCannotBeRead) {
    const std::string tuning = file("tuning.json", "{");
    const Opened host(kReference, [&](se_host_options_t& options) { options.tuning = tuning.c_str(); });
    EXPECT_EQ(host.status(), SE_HOST_BAD_FILE);
    EXPECT_EQ(host, nullptr);
    EXPECT_EQ(host.why().rfind("'" + tuning + "' is not a tuning file: ", 0), 0U) << host.why();
}

TEST_F(OpenHost, TakesAnArrayAndGivesItBack) {
    const std::string array = file("bar.txt", "2 30 0\n3 60 0\n4 90 0\n5 30 180\n6 60 180\n7 45 90\n");
    {
        const Opened host(kReference, [&](se_host_options_t& options) { options.array = array.c_str(); });
        EXPECT_EQ(host.status(), SE_HOST_OK) << host.why();
        EXPECT_EQ(host.get("mmfx_array").substr(0, 1), "1");
    }
    const Opened host(kReference);
    EXPECT_EQ(host.get("mmfx_array").substr(0, 1), "0");
}

TEST_F(OpenHost, RefusesAnArrayThatCannotBeRead) {
    const std::string array = file("bar.txt", "8 40 0\n");
    const Opened host(kReference, [&](se_host_options_t& options) { options.array = array.c_str(); });
    EXPECT_EQ(host.status(), SE_HOST_BAD_FILE);
    EXPECT_NE(host.why().find("line 1: channel 8 is not one of 2 to 7"), std::string::npos) << host.why();
}

TEST_F(OpenHost, HandsTheLogToTheCallerUntilItIsClosed) {
    std::vector<std::string> lines;
    Opened host(kReference, [&](se_host_options_t& options) {
        options.log = [](void* context, int level, const char* tag, const char* text) {
            static_cast<std::vector<std::string>*>(context)->push_back(std::to_string(level) + " " + tag +
                                                                       " " + text);
        };
        options.log_context = &lines;
    });
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(lines.back().rfind("4 se_wrapper Successfully loaded Signal Essence Library. ", 0), 0U)
        << lines.back();
    host.close();
    const size_t count = lines.size();
    QUILL_LOG(4, "test") << "after";
    EXPECT_EQ(lines.size(), count);
}

}  // namespace
}  // namespace se_host_library_test
