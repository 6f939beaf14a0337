// Checks as statements: what they evaluate, and how they combine with other statements.
#include <gtest/gtest.h>

#include "common/check.h"
#include "tests/common/support_services/scoped_threshold.h"
#include "tests/support/log_capture.h"

namespace quill {
namespace {

TEST(CheckStatement, EvaluatesItsOperandsOnceWhenItHolds) {
    int a = 0;
    int b = 0;
    QUILL_CHECK(++a == 1);
    QUILL_CHECK_EQ(++a, 2 + b++);
    EXPECT_EQ(a, 2);
    EXPECT_EQ(b, 1);
}

TEST(CheckStatement, EvaluatesItsOperandsOnceWhenItFails) {
    const test::ScopedTagThreshold none("check", 0);
    int a = 0;
    int b = 0;
    QUILL_CHECK(++a == 0);
    QUILL_CHECK_EQ(++a, b++);
    EXPECT_EQ(a, 2);
    EXPECT_EQ(b, 1);
}

TEST(CheckStatement, BuildsNothingWhenItHolds) {
    int pieces = 0;
    QUILL_CHECK(true) << ++pieces;
    QUILL_CHECK_EQ(1, 1) << ++pieces;
    EXPECT_EQ(pieces, 0);
}

TEST(CheckStatement, BuildsNothingWhenItsRecordIsFilteredOut) {
    const test::ScopedTagThreshold none("check", 0);
    int pieces = 0;
    QUILL_CHECK(false) << ++pieces;
    QUILL_CHECK_EQ(1, 2) << ++pieces;
    EXPECT_EQ(pieces, 0);
}

// Writes itself as its number and counts how often it does.
struct Counted {
    int number;
    int* written;
    bool operator==(const Counted& other) const { return number == other.number; }
};
std::ostream& operator<<(std::ostream& stream, const Counted& counted) {
    ++*counted.written;
    return stream << counted.number;
}

TEST(CheckStatement, MakesTheMessageOfAFailedComparisonAlsoWhenItsRecordIsFilteredOut) {
    setLogThreshold("check", 0);
    int written = 0;
    QUILL_CHECK_EQ((Counted{1, &written}), (Counted{2, &written}));
    EXPECT_EQ(written, 2);
}

TEST(CheckStatement, MakesNoMessageForAComparisonThatHolds) {
    int written = 0;
    QUILL_CHECK_EQ((Counted{1, &written}), (Counted{1, &written}));
    EXPECT_EQ(written, 0);
}

TEST(CheckStatement, TakesTheElseOfTheIfAroundIt) {
    const auto branch = [](bool condition) {
        if (condition)
            QUILL_CHECK(condition);
        else
            return "else";
        if (condition)
            QUILL_CHECK_EQ(condition, true);
        else
            return "else";
        return "then";
    };
    EXPECT_STREQ(branch(true), "then");
    EXPECT_STREQ(branch(false), "else");
}

TEST(CheckStatementDeathTest, TextIsTheSourceBeforeMacroExpansion) {
#define EXPANDS_TO_FALSE false
    EXPECT_FATAL_RECORD_ANY_LINE(QUILL_CHECK_AT((RecordSite{"s", 1}), EXPANDS_TO_FALSE), "check", "s",
                                 "Check failed EXPANDS_TO_FALSE ");
#undef EXPANDS_TO_FALSE
}

TEST(CheckStatementDeathTest, SurvivesHostileNamesInScope) {
    const int a = 1, b = 2, text = 3, message = 4, quill = 5, check_internal = 6, site = 7;
    EXPECT_FATAL_RECORD_ANY_LINE(QUILL_CHECK_NE(a + b, text), "check", __FILE__,
                                 "Check failed: a + b != text (3 vs. 3) ");
    EXPECT_EQ(a + b + text + message + quill + check_internal + site, 28);
}

TEST(CheckStatement, ComparesPointersWithNull) {
    const int value = 0;
    const int* const pointer = &value;
    QUILL_CHECK_NE(pointer, nullptr);
    QUILL_CHECK(pointer);
}

}  // namespace
}  // namespace quill
