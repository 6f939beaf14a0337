// Level 1 ends the process, once the record has been written.
#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>

#include "common/logging.h"
#include "tests/common/support_services/scoped_threshold.h"
#include "tests/support/log_capture.h"

namespace quill {
namespace {

TEST(FatalRecordDeathTest, ReachesTheSinkThenAborts) {
    const auto die = [] {
        setLogSink(
            [](const LogRecord& record) { std::fprintf(stderr, "sink got <%s>\n", record.text.c_str()); });
        QUILL_LOG(1, "se_wrapper") << "the end";
        std::fprintf(stderr, "went on\n");
    };
    EXPECT_EXIT(die(), testing::KilledBySignal(SIGABRT), "^sink got <the end>\n$");
}

TEST(FatalRecordDeathTest, ReachesStandardErrorWithoutASink) {
    EXPECT_EXIT(QUILL_LOG_AT(1, "se_wrapper", "source", 3) << "the end", testing::KilledBySignal(SIGABRT),
                "^FATAL \\[se_wrapper\\] source:3: the end\n$");
}

TEST(FatalRecordDeathTest, ASinkThatThrowsEndsTheProcessToo) {
    const auto die = [] {
        setLogSink([](const LogRecord&) { throw 1; });
        QUILL_LOG(2, "se_wrapper") << "survivable";
    };
    EXPECT_EXIT(die(), testing::KilledBySignal(SIGABRT), "");
}

TEST(FatalRecord, FilteredOutLetsExecutionGoOn) {
    const test::ScopedThreshold none(0);
    QUILL_LOG(1, "se_wrapper") << "dropped";
    SUCCEED();
}

}  // namespace
}  // namespace quill
