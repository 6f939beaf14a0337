// Soft assertions: what they report, when they ask for a debugger.
#include <gtest/gtest.h>
#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

#include "common/assertion.h"
#include "tests/support/log_capture.h"

namespace quill {
namespace {

constexpr RecordSite kSite{"some/source", 77};

TEST(Assertion, HandlerReceivesFileLineFunctionAndFilledText) {
    const test::ScopedAssertionCapture assertions;
    EXPECT_FALSE(handleAssertion("file", 12, "function", "Assertion failed: %s is not %d.", "x", 3));
    ASSERT_EQ(assertions.records().size(), 1u);
    const AssertionRecord record = assertions.records()[0];
    EXPECT_STREQ(record.file, "file");
    EXPECT_EQ(record.line, 12);
    EXPECT_STREQ(record.function, "function");
    EXPECT_EQ(record.text, "Assertion failed: x is not 3.");
}

TEST(Assertion, AnswersWhatTheHandlerAnswers) {
    const test::ScopedAssertionCapture assertions(true);
    EXPECT_TRUE(handleAssertion("file", 12, "function", "Assertion failed: x"));
}

TEST(Assertion, TakesATextOfAnyLength) {
    const test::ScopedAssertionCapture assertions;
    const std::string text(100000, 'x');
    handleAssertion("file", 1, "function", "Assertion failed: %s", text.c_str());
    EXPECT_EQ(assertions.texts(), std::vector<std::string>{"Assertion failed: " + text});
}

TEST(Assertion, DefaultMakesOneErrorRecordWithTheAssertionsIdentity) {
    const test::ScopedLogCapture log;
    EXPECT_FALSE(handleAssertion("file", 12, "function", "Assertion failed: x"));
    ASSERT_EQ(log.records().size(), 1u);
    const LogRecord record = log.records()[0];
    EXPECT_EQ(record.level, 2);
    EXPECT_STREQ(record.tag, "assert");
    EXPECT_STREQ(record.source, "file");
    EXPECT_STREQ(record.function, "function");
    EXPECT_EQ(record.line, 12);
    EXPECT_EQ(record.text, "Assertion failed: x");
}

TEST(Assertion, AnEmptyHandlerRestoresTheDefault) {
    const test::ScopedLogCapture log;
    setAssertionHandler([](const AssertionRecord&) { return true; });
    setAssertionHandler({});
    EXPECT_FALSE(handleAssertion("file", 12, "function", "Assertion failed: x"));
    EXPECT_EQ(log.texts(2), std::vector<std::string>{"Assertion failed: x"});
}

TEST(Assertion, DefaultAsksForAStopWhileADebuggerIsAttached) {
    const pid_t child = fork();
    if (child == 0) {
        setLogThreshold(0);
        if (ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) _exit(2);
        _exit(handleAssertion("file", 12, "function", "Assertion failed: x") ? 1 : 0);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status));
    if (WEXITSTATUS(status) == 2) GTEST_SKIP() << "no tracing in this environment";
    EXPECT_EQ(WEXITSTATUS(status), 1);
}

TEST(AssertionDeathTest, TrapsWhenTheHandlerAsksForIt) {
    const test::ScopedAssertionCapture assertions(true);
    EXPECT_EXIT(QUILL_ASSERTION_FAILED(kSite, "Assertion failed: x"), testing::KilledBySignal(SIGTRAP), "");
}

TEST(Assertion, GoesOnWhenTheHandlerDoesNotAskForAStop) {
    const test::ScopedAssertionCapture assertions;
    QUILL_ASSERTION_FAILED(kSite, "Assertion failed: %d", 1);
    ASSERT_EQ(assertions.records().size(), 1u);
    EXPECT_STREQ(assertions.records()[0].file, "some/source");
    EXPECT_EQ(assertions.records()[0].line, 77);
    EXPECT_STREQ(assertions.records()[0].function, __PRETTY_FUNCTION__);
}

volatile sig_atomic_t g_traps = 0;

TEST(Assertion, GoesOnAfterTheTrapWhenItIsResumed) {
    const test::ScopedAssertionCapture assertions(true);
    std::signal(SIGTRAP, [](int) { g_traps = g_traps + 1; });
    QUILL_ASSERTION_FAILED(kSite, "Assertion failed: x");
    std::signal(SIGTRAP, SIG_DFL);
    EXPECT_EQ(g_traps, 1);
}

TEST(Assertion, AHandlerMayReplaceItself) {
    setAssertionHandler([](const AssertionRecord&) {
        setAssertionHandler([](const AssertionRecord&) { return false; });
        return true;
    });
    EXPECT_TRUE(handleAssertion("file", 1, "function", "Assertion failed: x"));
    EXPECT_FALSE(handleAssertion("file", 1, "function", "Assertion failed: x"));
    setAssertionHandler({});
}

}  // namespace
}  // namespace quill
