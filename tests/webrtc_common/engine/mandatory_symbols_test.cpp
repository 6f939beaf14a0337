// An engine without a mandatory symbol stops the process, and the record names the symbol.
#include <gtest/gtest.h>

#include "tests/support/log_capture.h"
#include "tests/webrtc_common/engine/engine_rows.h"
#include "webrtc_common/se_wrapper/engine/load.h"

using namespace quill::media::se_wrapper;
using namespace quill::media::se_wrapper::test;
namespace record_sites = quill::record_sites;

namespace {

class MandatorySymbol : public testing::TestWithParam<std::size_t> {};

TEST_P(MandatorySymbol, IsNamedWhenTheEngineLacksIt) {
    const std::string symbol = kEngineRows[GetParam()].symbols[0];
    EXPECT_FATAL_RECORD(openSignalEssenceDynamicLibrary("test_engines/without_" + symbol), "check",
                        record_sites::kSymbolByName, "Check failed *sym Symbol " + symbol + " not found!");
}

INSTANTIATE_TEST_SUITE_P(Every, MandatorySymbol, testing::ValuesIn(rowsOf({EngineRowKind::mandatory})),
                         rowName);

class MandatoryAlternatives : public testing::TestWithParam<std::size_t> {};

TEST_P(MandatoryAlternatives, AreAllNamedWhenTheEngineLacksAll) {
    const std::string first = kEngineRows[GetParam()].symbols[0];
    const std::string second = kEngineRows[GetParam()].symbols[1];
    EXPECT_FATAL_RECORD(openSignalEssenceDynamicLibrary("test_engines/without_" + first), "check",
                        record_sites::kSymbolByList,
                        "Check failed *sym Symbols " + first + "," + second + " not found!");
}

INSTANTIATE_TEST_SUITE_P(Every, MandatoryAlternatives,
                         testing::ValuesIn(rowsOf({EngineRowKind::alternatives, EngineRowKind::hook})),
                         rowName);

TEST(TwoMissingSymbols, AreReportedByTheFirstRowOfTheTable) {
    EXPECT_FATAL_RECORD(
        openSignalEssenceDynamicLibrary("test_engines/without_MMIfSetAutoLocationSearch_and_MMIfInit"),
        "check", record_sites::kSymbolByName,
        "Check failed *sym Symbol MMIfSetAutoLocationSearch not found!");
}

TEST(TwoMissingSymbols, AreReportedInTableOrderAcrossKinds) {
    EXPECT_FATAL_RECORD(
        openSignalEssenceDynamicLibrary("test_engines/without_SEDiagGetName_and_SEDiagGetInt40"), "check",
        record_sites::kSymbolByList, "Check failed *sym Symbols SEDiagGetInt40,SEDiagGetInt64 not found!");
}

TEST(MissingSymbol, LeavesTheRestOfTheTableFilledWhenFatalRecordsAreDropped) {
    quill::setLogThreshold("check", 0);
    openSignalEssenceDynamicLibrary("test_engines/without_SEDiagGetInt16");
    EXPECT_EQ(nullptr, SEDiagGetInt16);
    EXPECT_NE(nullptr, MMIfInit);
    EXPECT_NE(nullptr, SEDiagGetName);
}

}  // namespace
