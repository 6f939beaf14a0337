// The sink that is there when nobody sets one.
#include <gtest/gtest.h>

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

TEST(LogOnStandardError, ComesBackWithAnEmptySink) {
    setLogSink([](const LogRecord&) {});
    EXPECT_EQ(lineOf(2), "");
    setLogSink({});
    EXPECT_EQ(lineOf(2), "ERROR [se_wrapper] source:12: text\n");
}

}  // namespace
}  // namespace quill
