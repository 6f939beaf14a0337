// Logging from several threads at once.
#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "common/logging.h"
#include "tests/support/log_capture.h"

namespace quill {
namespace {

constexpr int kThreads = 4;
constexpr int kRounds = 200;

template <class Work>
void inThreads(const Work& work) {
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) threads.emplace_back([&work, t] { work(t); });
    for (std::thread& thread : threads) thread.join();
}

TEST(LogThreads, EveryRecordArrivesWhole) {
    const test::ScopedLogCapture log;
    inThreads([](int t) {
        for (int i = 0; i < kRounds; ++i) QUILL_LOG(4, "se_wrapper") << "thread " << t << " record " << i;
    });
    std::vector<int> next(kThreads, 0);
    for (const std::string& text : log.texts()) {
        const int t = text.at(7) - '0';
        EXPECT_EQ(text, "thread " + std::to_string(t) + " record " + std::to_string(next.at(size_t(t))++));
    }
    EXPECT_EQ(next, std::vector<int>(kThreads, kRounds));
}

TEST(LogThreads, AFreshCallSiteIsNumberedOnce) {
    const test::ScopedLogCapture log;
    int uid = -1;
    std::atomic<int> ready{0};
    std::vector<int> seen(kThreads);
    inThreads([&](int t) {
        ++ready;
        while (ready < kThreads) std::this_thread::yield();
        LoggingStream(nullptr, 4, "se_wrapper", "source", "function", 1, &uid).stream() << t;
        seen[size_t(t)] = __atomic_load_n(&uid, __ATOMIC_RELAXED);
    });
    EXPECT_NE(uid, -1);
    EXPECT_EQ(seen, std::vector<int>(kThreads, uid));
}

TEST(LogThreads, CallSitesHaveNumbersOfTheirOwn) {
    const test::ScopedLogCapture log;
    int first = -1;
    int second = -1;
    LoggingStream(nullptr, 4, "se_wrapper", "source", "function", 1, &first).stream();
    LoggingStream(nullptr, 4, "se_wrapper", "source", "function", 2, &second).stream();
    EXPECT_NE(first, second);
}

TEST(LogThreads, SinkAndThresholdsMayChangeMeanwhile) {
    std::atomic<int> kept{0};
    setLogSink([&](const LogRecord&) { ++kept; });
    inThreads([&](int t) {
        for (int i = 0; i < kRounds; ++i) {
            if (t == 0) {
                setLogSink([&](const LogRecord&) { ++kept; });
                setLogThreshold(i % 2 == 0 ? 5 : 4);
                setLogThreshold("threads", i % 2 == 0 ? 4 : 5);
            } else {
                QUILL_LOG(4, "threads") << i;
                QUILL_LOG(5, "other") << i;
            }
        }
    });
    setLogSink([&](const LogRecord&) { ++kept; });
    kept = 0;
    QUILL_LOG(4, "se_wrapper") << "after";
    setLogSink({});
    setLogThreshold(4);
    EXPECT_EQ(kept, 1);
}

}  // namespace
}  // namespace quill
