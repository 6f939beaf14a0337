// Engines that export everything, but not everything as what it is used for; and engines that close themselves.
#include <gtest/gtest.h>

#include <string>

#include "tests/engines/test_engine.h"
#include "tests/support/log_capture.h"
#include "webrtc_common/se_wrapper/engine/load.h"
#include "webrtc_common/se_wrapper/records.h"
#include "webrtc_common/se_wrapper/table/engine_symbols.h"
#include "webrtc_common/se_wrapper/table/engine_table.h"

using namespace quill::media::se_wrapper;
using quill::test::enginePath;
using quill::test::fatalRecordPattern;

namespace {

// The oddity, what is said of it.
struct Oddity {
    const char* name;
    const char* objection;
};

std::string engineWith(const char* oddity) {
    return std::string("test_engines/odd_") + oddity;
}

class OddEngine : public testing::TestWithParam<Oddity> {};
INSTANTIATE_TEST_SUITE_P(
    With, OddEngine,
    testing::Values(Oddity{"init_is_a_variable", "symbol MMIfInit is data, not a function"},
                    Oddity{"init_is_a_constant", "symbol MMIfInit is data, not a function"},
                    Oddity{"hook_is_a_function", "symbol ComputeRFir is a function, not a variable"},
                    Oddity{"hook_is_a_constant", "symbol ComputeRFir is a constant, not a variable"},
                    Oddity{"hook_is_null_for_ever", "symbol ComputeRFir is a constant, not a variable"},
                    Oddity{"hook_is_small",
                           "symbol ComputeRFir is smaller than the 8 bytes of the variable that is expected"},
                    Oddity{"optional_is_a_variable", "symbol SEDiagGetHelp is data, not a function"},
                    Oddity{"dft_hooks_are_functions", "symbol InitDftFcnHook is a function, not a variable"}),
    [](const auto& oddity) { return oddity.param.name; });

TEST_P(OddEngine, IsNotUsable) {
    const auto engine = quill::loadDynamicLibrary(enginePath(engineWith(GetParam().name)));
    EXPECT_EQ(GetParam().objection, whyNotUsable(engine));
}

TEST_P(OddEngine, EndsInTheFatalRecordAfterTheReason) {
    const std::string name = engineWith(GetParam().name);
    const std::string reason = "<record level=5 tag=se_wrapper source=webrtc_common/se_wrapper line=[0-9]+>" +
                               enginePath(name) + ": " + GetParam().objection + "</record>\n";
    EXPECT_DEATH(
        {
            quill::test::writeRecordsForDeathTest();
            quill::setLogThreshold(5);
            openSignalEssenceDynamicLibrary(name);
        },
        testing::MatchesRegex(
            reason +
            fatalRecordPattern("check", record_sites::kLibraryNotOpened,
                               "Check failed se_lib Could not open shared library at " + enginePath(name)) +
            "\n"));
}

class UsableEngine : public testing::TestWithParam<const char*> {};
INSTANTIATE_TEST_SUITE_P(With, UsableEngine,
                         testing::Values("odd_none", "odd_init_is_chosen", "full", "both_names", "minimal"),
                         [](const auto& name) { return name.param; });

TEST_P(UsableEngine, IsLoaded) {
    openSignalEssenceDynamicLibrary(std::string("test_engines/") + GetParam());
    EXPECT_NE(nullptr, MMIfInit);
    EXPECT_NE(nullptr, ComputeRFir_FcnHook);
}

// A missing symbol is found first, wherever it stands.
TEST(EngineWithTwoFaults, IsRefusedForTheMissingSymbol) {
    EXPECT_FATAL_RECORD(openSignalEssenceDynamicLibrary(engineWith("two_faults")), "check",
                        quill::record_sites::kSymbolByName,
                        "Check failed *sym Symbol SEDiagGetName not found!");
}

class EngineThatClosesItself : public testing::TestWithParam<const char*> {};
INSTANTIATE_TEST_SUITE_P(When, EngineThatClosesItself,
                         testing::Values("closes_itself_at_once", "closes_itself_later"),
                         [](const auto& when) { return when.param; });

TEST_P(EngineThatClosesItself, StaysLoaded) {
    openSignalEssenceDynamicLibrary(engineWith(GetParam()));
    ASSERT_NE(nullptr, MMIfSetAutoLocationSearch);
    MMIfSetAutoLocationSearch();
    EXPECT_EQ(nullptr, MMIfGetVersionString());
    EXPECT_TRUE(quill::test::isEngineInProcess(engineWith(GetParam())));
}

TEST(EngineThatLacksALibrary, IsRefusedWithTheLoadersReason) {
    EXPECT_DEATH(
        {
            quill::test::writeRecordsForDeathTest();
            quill::setLogThreshold(5);
            openSignalEssenceDynamicLibrary(engineWith("needs_a_library"));
        },
        testing::ContainsRegex(
            "<record level=5 tag=se_wrapper [^>]*>libodd_engine_library.so: cannot open shared "
            "object file: No such file or directory</record>\n"));
}

}  // namespace
