// QUILL_LOG as a statement: what it evaluates, and how it combines with other statements.
#include <gtest/gtest.h>

#include "common/logging.h"
#include "tests/support/log_capture.h"

namespace quill {
namespace {

using test::ScopedLogCapture;

TEST(LogStatement, EvaluatesLevelTagAndPiecesOnce) {
    const ScopedLogCapture log;
    int levels = 0;
    int tags = 0;
    int pieces = 0;
    const auto tag = [&] {
        ++tags;
        return "se_wrapper";
    };
    QUILL_LOG((++levels, 2), tag()) << ++pieces;
    EXPECT_EQ(levels, 1);
    EXPECT_EQ(tags, 1);
    EXPECT_EQ(pieces, 1);
    EXPECT_EQ(log.records().size(), 1u);
}

TEST(LogStatement, DisabledBuildsNothing) {
    const ScopedLogCapture log;
    int pieces = 0;
    QUILL_LOG(5, "se_wrapper") << ++pieces;
    EXPECT_EQ(pieces, 0);
    EXPECT_TRUE(log.records().empty());
}

TEST(LogStatement, DisabledStillEvaluatesLevelAndTagOnce) {
    int evaluations = 0;
    QUILL_LOG((++evaluations, 5), "se_wrapper") << "dropped";
    EXPECT_EQ(evaluations, 1);
}

TEST(LogStatement, TakesTheElseOfTheIfAroundIt) {
    const ScopedLogCapture log;
    const bool condition = log.records().empty();
    bool else_taken = false;
    if (!condition)
        QUILL_LOG(2, "se_wrapper") << "then";
    else
        else_taken = true;
    EXPECT_TRUE(else_taken);
    EXPECT_TRUE(log.records().empty());
}

TEST(LogStatement, DisabledDoesNotFallIntoTheElse) {
    bool else_taken = false;
    if (!else_taken)
        QUILL_LOG(5, "se_wrapper") << "dropped";
    else
        else_taken = true;
    EXPECT_FALSE(else_taken);
}

TEST(LogStatement, SurvivesHostileNamesInScope) {
    const ScopedLogCapture log;
    const int quill = 1, level = 2, tag = 3, stream = 4, record = 5, LoggingStream = 6, isLoggerEnabled = 7;
    QUILL_LOG(2, "se_wrapper") << quill << level << tag << stream << record << LoggingStream
                               << isLoggerEnabled;
    EXPECT_EQ(log.texts(), std::vector<std::string>{"1234567"});
}

TEST(LogStatement, MayBeInALoopWithoutBraces) {
    const ScopedLogCapture log;
    for (int i = 0; i < 3; ++i) QUILL_LOG(4, "se_wrapper") << i;
    EXPECT_EQ(log.texts(), (std::vector<std::string>{"0", "1", "2"}));
}

TEST(LogStatement, MayOccurTwiceInOneScope) {
    const ScopedLogCapture log;
    QUILL_LOG(4, "se_wrapper") << "a";
    QUILL_LOG(4, "se_wrapper") << "b";
    EXPECT_EQ(log.texts(), (std::vector<std::string>{"a", "b"}));
}

TEST(LogStatement, HasOneNumberForItsCallSiteHoweverOftenItRuns) {
    const ScopedLogCapture log;
    std::vector<int> first;
    int second = -1;
    for (int i = 0; i < 2; ++i)
        QUILL_LOG(4, "se_wrapper") << (first.push_back(quill_logging_point_uid__), "first");
    QUILL_LOG(4, "se_wrapper") << (second = quill_logging_point_uid__);
    EXPECT_EQ(first, std::vector<int>(2, first.front()));
    EXPECT_NE(first.front(), -1);
    EXPECT_NE(first.front(), second);
}

TEST(LogStatement, MayLogWhileItsPiecesAreBuilt) {
    const ScopedLogCapture log;
    const auto inner = [] {
        QUILL_LOG(4, "se_wrapper") << "inner";
        return "outer";
    };
    QUILL_LOG(4, "se_wrapper") << inner();
    EXPECT_EQ(log.texts(), (std::vector<std::string>{"inner", "outer"}));
}

}  // namespace
}  // namespace quill
