// What a record carries, and where it goes.
#include <gtest/gtest.h>

#include <locale>
#include <string>

#include "common/logging.h"
#include "tests/support/log_capture.h"

namespace quill {
namespace {

using test::ScopedLogCapture;

struct GroupedDigits : std::numpunct<char> {
    char do_thousands_sep() const override { return '.'; }
    char do_decimal_point() const override { return ','; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(LogRecord, CarriesLevelTagSourceFunctionAndLine) {
    const ScopedLogCapture log;
    const int line = __LINE__ + 1;
    QUILL_LOG(2, "se_wrapper") << "Unhandled type " << 9;
    ASSERT_EQ(log.records().size(), 1u);
    const LogRecord record = log.records()[0];
    EXPECT_EQ(record.level, 2);
    EXPECT_STREQ(record.tag, "se_wrapper");
    EXPECT_STREQ(record.source, __FILE__);
    EXPECT_STREQ(record.function, __PRETTY_FUNCTION__);
    EXPECT_EQ(record.line, line);
    EXPECT_EQ(record.text, "Unhandled type 9");
}

TEST(LogRecord, TextIsWhatTheStreamFormats) {
    const ScopedLogCapture log;
    QUILL_LOG(4, "se_wrapper") << std::string("s") << ' ' << -7 << ' ' << 0.5 << ' ' << true << ' ' << 1e-7f;
    EXPECT_EQ(log.texts(), std::vector<std::string>{"s -7 0.5 1 1e-07"});
}

TEST(LogRecord, TextIsTheSameInEveryLocale) {
    const ScopedLogCapture log;
    const std::locale before = std::locale::global(std::locale(std::locale::classic(), new GroupedDigits));
    QUILL_LOG(4, "se_wrapper") << 1234567 << ' ' << 0.5;
    std::locale::global(before);
    EXPECT_EQ(log.texts(), std::vector<std::string>{"1234567 0.5"});
}

TEST(LogRecord, MayBeEmpty) {
    const ScopedLogCapture log;
    QUILL_LOG(4, "se_wrapper");
    EXPECT_EQ(log.texts(), std::vector<std::string>{""});
}

TEST(LogRecord, ASinkMayLog) {
    std::vector<std::string> texts;
    setLogSink([&](const LogRecord& record) {
        texts.push_back(record.text);
        if (record.level == 2) QUILL_LOG(4, "sink") << "nested";
    });
    QUILL_LOG(2, "se_wrapper") << "outer";
    setLogSink({});
    EXPECT_EQ(texts, (std::vector<std::string>{"outer", "nested"}));
}

TEST(LogRecord, ASinkMayReplaceItself) {
    int first = 0;
    int second = 0;
    setLogSink([&](const LogRecord&) {
        ++first;
        setLogSink([&](const LogRecord&) { ++second; });
    });
    QUILL_LOG(4, "se_wrapper") << 1;
    QUILL_LOG(4, "se_wrapper") << 2;
    setLogSink({});
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 1);
}

TEST(LogRecord, OnlyLevelOneEndsTheProcess) {
    const ScopedLogCapture log;
    for (const int level : {-1, 0, 2, 3, 4, 5}) {
        int uid = -1;
        LoggingStream(nullptr, level, "se_wrapper", "source", "function", 12, &uid).stream() << level;
    }
    EXPECT_EQ(log.texts(), (std::vector<std::string>{"-1", "0", "2", "3", "4", "5"}));
}

TEST(LogRecord, ExplicitStreamEmitsWhenItIsDestroyed) {
    const ScopedLogCapture log;
    int uid = -1;
    {
        LoggingStream stream(nullptr, 2, "se_wrapper", "source", "function", 12, &uid);
        stream.stream() << "text";
        EXPECT_TRUE(log.records().empty());
    }
    EXPECT_EQ(log.texts(), std::vector<std::string>{"text"});
}

}  // namespace
}  // namespace quill
