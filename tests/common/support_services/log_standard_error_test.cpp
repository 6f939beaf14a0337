// The default sink.
#include <gtest/gtest.h>

#include <locale>

#include "common/logging.h"
#include "tests/common/support_services/scoped_threshold.h"

namespace quill {
namespace {

std::string lineOf(int level) {
    testing::internal::CaptureStderr();
    QUILL_LOG_AT(level, "se_wrapper", "source", 12) << "text";
    return testing::internal::GetCapturedStderr();
}

TEST(LogOnStandardError, IsOneLineWithLevelTagSourceLineAndText) {
    EXPECT_EQ(lineOf(2), "ERROR [se_wrapper] source:12: text\n");
}

TEST(LogOnStandardError, HasAWordForEachLevel) {
    const test::ScopedThreshold all(6);
    EXPECT_EQ(lineOf(4), "NOTICE [se_wrapper] source:12: text\n");
    EXPECT_EQ(lineOf(5), "TRACE [se_wrapper] source:12: text\n");
    EXPECT_EQ(lineOf(3), "LOG [se_wrapper] source:12: text\n");
}

TEST(LogOnStandardError, IsOneLineWithoutControlCharactersWhateverTheText) {
    testing::internal::CaptureStderr();
    QUILL_LOG_AT(2, "se_wrapper", "source", 12) << "a\x1b[2J\x9b"
                                                   "1m\nNOTICE forged";
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "ERROR [se_wrapper] source:12: a\\x1b[2J\\x9b1m\\nNOTICE forged\n");
}

TEST(LogOnStandardError, ShowsTheBeginningOfAVeryLongText) {
    testing::internal::CaptureStderr();
    QUILL_LOG_AT(2, "se_wrapper", "source", 12) << std::string(1'048'576, 'x');
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "ERROR [se_wrapper] source:12: " + std::string(kMostLogged, 'x') + "... (1048576 bytes)\n");
}

TEST(LogOnStandardError, IsTheSameInEveryLocale) {
    struct GroupedDigits : std::numpunct<char> {
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };
    const std::locale before = std::locale::global(std::locale(std::locale::classic(), new GroupedDigits));
    testing::internal::CaptureStderr();
    QUILL_LOG_AT(2, "se_wrapper", "source", 1234567) << 1234567;
    const std::string line = testing::internal::GetCapturedStderr();
    std::locale::global(before);
    EXPECT_EQ(line, "ERROR [se_wrapper] source:1234567: 1234567\n");
}

TEST(LogOnStandardError, IsRestoredByAnEmptySink) {
    setLogSink([](const LogRecord&) {});
    EXPECT_EQ(lineOf(2), "");
    setLogSink({});
    EXPECT_EQ(lineOf(2), "ERROR [se_wrapper] source:12: text\n");
}

}  // namespace
}  // namespace quill
