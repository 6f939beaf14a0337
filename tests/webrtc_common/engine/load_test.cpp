// Opening an engine build by name.
#include "webrtc_common/se_wrapper/engine/load.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include "tests/engines/test_engine.h"
#include "tests/support/log_capture.h"
#include "webrtc_common/se_wrapper/records.h"
#include "webrtc_common/se_wrapper/table/engine_table.h"

using namespace quill::media::se_wrapper;
using quill::test::enginePath;
using quill::test::isEngineInProcess;
using quill::test::ScopedLogCapture;
using quill::test::TestEngine;

namespace {

TEST(LoadNotice, NamesTheVersionOfTheEngine) {
    const TestEngine engine;
    engine->set_version("harbor_003.2");
    const ScopedLogCapture capture;
    openSignalEssenceDynamicLibrary("test_engines/full");
    const auto records = capture.records();
    ASSERT_EQ(1u, records.size());
    EXPECT_EQ(4, records[0].level);
    EXPECT_STREQ("se_wrapper", records[0].tag);
    EXPECT_STREQ("webrtc_common/se_wrapper", records[0].source);
    EXPECT_EQ(307, records[0].line);
    EXPECT_EQ("Successfully loaded Signal Essence Library. harbor_003.2", records[0].text);
}

TEST(LoadNotice, IsTheOnlyReasonToAskForTheVersion) {
    const TestEngine engine;
    const ScopedLogCapture capture;
    openSignalEssenceDynamicLibrary("test_engines/full");
    EXPECT_EQ(std::vector<std::string>{"MMIfGetVersionString()"}, engine.calls());
}

TEST(LoadNotice, IsNotFetchedWhenItsLevelIsDisabled) {
    const TestEngine engine;
    quill::setLogThreshold("se_wrapper", 3);
    openSignalEssenceDynamicLibrary("test_engines/full");
    EXPECT_NE(nullptr, MMIfInit);
    EXPECT_EQ(0, engine.count("MMIfGetVersionString"));
}

TEST(MissingLibrary, StopsTheProcessNamingTheFullPath) {
    EXPECT_FATAL_RECORD(
        openSignalEssenceDynamicLibrary("no_such_build"), "check", record_sites::kLibraryNotOpened,
        "Check failed se_lib Could not open shared library at " + enginePath("no_such_build"));
}

TEST(MissingLibrary, IsReportedAtLine220) {
    EXPECT_EQ(220, record_sites::kLibraryNotOpened.line);
    EXPECT_STREQ("webrtc_common/se_wrapper", record_sites::kLibraryNotOpened.source);
}

TEST(SecondOpen, LoadsNothingWhateverTheName) {
    openSignalEssenceDynamicLibrary("test_engines/full");
    const auto loaded = MMIfInit;
    openSignalEssenceDynamicLibrary("test_engines/minimal");
    EXPECT_EQ(loaded, MMIfInit);
    EXPECT_FALSE(isEngineInProcess("test_engines/minimal"));
}

TEST(SecondOpen, LogsNothing) {
    openSignalEssenceDynamicLibrary("test_engines/full");
    const ScopedLogCapture capture(5);
    openSignalEssenceDynamicLibrary("test_engines/minimal");
    EXPECT_TRUE(capture.records().empty());
}

TEST(SecondOpen, AcceptsANameThatDoesNotExist) {
    openSignalEssenceDynamicLibrary("test_engines/full");
    openSignalEssenceDynamicLibrary("no_such_build");
    SUCCEED();
}

TEST(LoadedEngine, StaysInTheProcess) {
    openSignalEssenceDynamicLibrary("test_engines/full");
    EXPECT_TRUE(isEngineInProcess("test_engines/full"));
}

// Two engines, or an engine and its host, may have symbols of one name.
TEST(LoadedEngine, KeepsItsSymbolsOutOfTheGlobalScope) {
    ASSERT_EQ(nullptr, ::dlsym(RTLD_DEFAULT, "SEDiagGetNumDiags"));
    openSignalEssenceDynamicLibrary("test_engines/full");
    EXPECT_EQ(nullptr, ::dlsym(RTLD_DEFAULT, "SEDiagGetNumDiags"));
}

TEST(LoadedEngine, IsNotInitialised) {
    openSignalEssenceDynamicLibrary("test_engines/full");
    EXPECT_EQ(0, TestEngine().count("MMIfInit"));
}

}  // namespace
