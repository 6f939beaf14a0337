// Resolving a symbol into a pointer: by one name, by a list of names, optionally.
#include <gtest/gtest.h>

#include "common/dynlib.h"
#include "tests/support/log_capture.h"

namespace quill {
namespace {

using Function = int (*)();

class ResolvedSymbol : public testing::Test {
  protected:
    DynLibHandle library_ = loadDynamicLibrary(FIXTURE_EXPORTER);
    Function function_ = nullptr;

    static int preferred() { return -1; }
    int resolved(const std::vector<const char*>& names) {
        getSymbolOrDie(&function_, library_, names);
        return function_();
    }
};
using ResolvedSymbolDeathTest = ResolvedSymbol;

TEST_F(ResolvedSymbol, ByNameAlwaysOverwrites) {
    function_ = &preferred;
    getSymbolOrDie(&function_, library_, "fixture_answer");
    EXPECT_EQ(function_(), 42);
}

TEST_F(ResolvedSymbolDeathTest, ByNameMissingIsFatal) {
    EXPECT_FATAL_RECORD(getSymbolOrDie(&function_, library_, "MMIfInit"), "check",
                        record_sites::kSymbolByName, "Check failed *sym Symbol MMIfInit not found!");
}

TEST_F(ResolvedSymbolDeathTest, ByNameMissingIsFatalEvenOverAPointerThatWasSet) {
    function_ = &preferred;
    EXPECT_FATAL_RECORD(getSymbolOrDie(&function_, library_, "MMIfInit"), "check",
                        record_sites::kSymbolByName, "Check failed *sym Symbol MMIfInit not found!");
}

TEST_F(ResolvedSymbol, ByListTakesTheFirstNameThatExists) {
    EXPECT_EQ(resolved({"fixture_answer", "fixture_other_answer"}), 42);
    function_ = nullptr;
    EXPECT_EQ(resolved({"no_such_name", "fixture_other_answer"}), 43);
}

TEST_F(ResolvedSymbol, ByListLeavesAPointerThatWasSet) {
    function_ = &preferred;
    EXPECT_EQ(resolved({"fixture_answer", "fixture_other_answer"}), -1);
}

TEST_F(ResolvedSymbol, ByListLeavesAPointerThatWasSetEvenIfNoNameExists) {
    function_ = &preferred;
    EXPECT_EQ(resolved({"no_such_name"}), -1);
    EXPECT_EQ(resolved({}), -1);
}

TEST_F(ResolvedSymbol, ByListTakesTheLastNameWhenNoOtherExists) {
    EXPECT_EQ(resolved({"no_such_name", "none_either", "fixture_answer"}), 42);
}

TEST_F(ResolvedSymbolDeathTest, ByListOfOneIsNamedWithoutASeparator) {
    EXPECT_FATAL_RECORD(resolved({"SEDiagGetInt40"}), "check", record_sites::kSymbolByList,
                        "Check failed *sym Symbols SEDiagGetInt40 not found!");
}

TEST_F(ResolvedSymbolDeathTest, WithoutALibraryIsFatal) {
    library_ = nullptr;
    EXPECT_FATAL_RECORD(getSymbolOrDie(&function_, library_, "fixture_answer"), "check",
                        record_sites::kSymbolByName, "Check failed *sym Symbol fixture_answer not found!");
}

TEST_F(ResolvedSymbol, IsNullAndReportsNothingWhenTheChecksAreFilteredOut) {
    const test::ScopedLogCapture log(5);
    setLogThreshold("check", 0);
    function_ = &preferred;
    getSymbolOrDie(&function_, library_, "no_such_name");
    EXPECT_EQ(function_, nullptr);
    getSymbolOrDie(&function_, library_, {"no_such_name", "none_either"});
    EXPECT_EQ(function_, nullptr);
    EXPECT_TRUE(log.records().empty());
}

TEST_F(ResolvedSymbolDeathTest, ByListMissingIsFatalAndNamesAll) {
    EXPECT_FATAL_RECORD(resolved({"SEDiagGetInt40", "SEDiagGetInt64"}), "check", record_sites::kSymbolByList,
                        "Check failed *sym Symbols SEDiagGetInt40,SEDiagGetInt64 not found!");
}

TEST_F(ResolvedSymbolDeathTest, ByEmptyListIsFatal) {
    EXPECT_FATAL_RECORD(resolved({}), "check", record_sites::kSymbolByList,
                        "Check failed *sym Symbols  not found!");
}

TEST_F(ResolvedSymbol, OptionalIsNullWithoutARecordWhenMissing) {
    const test::ScopedLogCapture log(5);
    function_ = &preferred;
    getSymbol(&function_, library_, "no_such_name");
    EXPECT_EQ(function_, nullptr);
    EXPECT_TRUE(log.records().empty());
}

TEST_F(ResolvedSymbol, OptionalIsSetWhenPresent) {
    getSymbol(&function_, library_, "fixture_answer");
    ASSERT_NE(function_, nullptr);
    EXPECT_EQ(function_(), 42);
}

}  // namespace
}  // namespace quill
