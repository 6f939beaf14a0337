// Looking up what a library exports.
#include <gtest/gtest.h>

#include "common/dynlib.h"
#include "tests/support/log_capture.h"

namespace quill {
namespace {

TEST(SymbolAddress, FindsAFunction) {
    const DynLibHandle library = loadDynamicLibrary(FIXTURE_EXPORTER);
    const auto function = reinterpret_cast<int (*)()>(getSymbolAddress(library, "fixture_answer"));
    ASSERT_NE(function, nullptr);
    EXPECT_EQ(function(), 42);
}

TEST(SymbolAddress, FindsAVariable) {
    const DynLibHandle library = loadDynamicLibrary(FIXTURE_EXPORTER);
    const auto* const variable = static_cast<const int*>(getSymbolAddress(library, "fixture_variable"));
    ASSERT_NE(variable, nullptr);
    EXPECT_EQ(*variable, 7);
}

TEST(SymbolAddress, OfANameThatTheLibraryLacksIsNullWithoutARecord) {
    const test::ScopedLogCapture log(5);
    const DynLibHandle library = loadDynamicLibrary(FIXTURE_EXPORTER);
    EXPECT_EQ(getSymbolAddress(library, "fixture_no_such_name"), nullptr);
    EXPECT_EQ(getSymbolAddress(library, ""), nullptr);
    EXPECT_TRUE(log.records().empty());
}

TEST(SymbolAddress, OfANameThatTheLibraryHidesIsNull) {
    const DynLibHandle library = loadDynamicLibrary(FIXTURE_EXPORTER);
    EXPECT_EQ(getSymbolAddress(library, "fixture_hidden"), nullptr);
}

TEST(SymbolAddress, MustMatchTheWholeName) {
    const DynLibHandle library = loadDynamicLibrary(FIXTURE_EXPORTER);
    EXPECT_EQ(getSymbolAddress(library, "fixture_answe"), nullptr);
    EXPECT_EQ(getSymbolAddress(library, "fixture_answer_"), nullptr);
    EXPECT_EQ(getSymbolAddress(library, "Fixture_answer"), nullptr);
}

TEST(SymbolAddress, OfANameThatOnlyADependencyExportsIsNull) {
    const DynLibHandle dependent = loadDynamicLibrary(FIXTURE_DEPENDENT);
    ASSERT_NE(getSymbolAddress(dependent, "dependent_answer"), nullptr);
    EXPECT_EQ(getSymbolAddress(dependent, "fixture_answer"), nullptr);
    EXPECT_EQ(getSymbolAddress(dependent, "malloc"), nullptr);
}

TEST(SymbolAddress, OfADependencyIsFoundThroughItsOwnHandle) {
    loadDynamicLibrary(FIXTURE_DEPENDENT);
    EXPECT_NE(getSymbolAddress(loadDynamicLibrary(FIXTURE_EXPORTER), "fixture_answer"), nullptr);
}

TEST(SymbolAddress, OfNoLibraryIsNull) {
    EXPECT_EQ(getSymbolAddress(nullptr, "fixture_answer"), nullptr);
}

}  // namespace
}  // namespace quill
