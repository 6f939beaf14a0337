// The services of libcommon, used by several threads at once while sinks, thresholds and handlers change.
#include <gtest/gtest.h>

#include <atomic>

#include "common/assertion.h"
#include "common/cpu_info.h"
#include "common/dynlib.h"
#include "common/file.h"
#include "common/logging.h"
#include "common/properties.h"
#include "common/string_printf.h"
#include "common/value_traits.h"
#include "tests/common/property_node/threads.h"

namespace quill {
namespace {

constexpr int kThreads = 4;
constexpr int kRounds = 200;

StaticProperty<int> p_shared("threads/shared", 5, __FILE__);

void useLog(int i) {
    setLogThreshold("threads", 4 + i % 2);
    QUILL_LOG(5, "threads") << "record " << i;
    QUILL_LOG(4, "threads") << "record " << i;
    isLoggerEnabled(4, "other");
}

void useAssertions(int i) {
    handleAssertion(__FILE__, __LINE__, "function", "Assertion failed: %d", i);
}

void useLibraries(int) {
    std::string why;
    const DynLibHandle library = loadDynamicLibrary(LIBRARY, &why);
    EXPECT_NE(library, nullptr) << why;
    EXPECT_NE(getSymbolAddress(library, "g_convolve_i16_i16"), nullptr);
    EXPECT_EQ(loadDynamicLibrary("/dev/null", &why), nullptr);
    EXPECT_NE(why.find("/dev/null"), std::string::npos);
}

void useTexts(int i) {
    EXPECT_EQ(stringPrintf("%d", i), std::to_string(i));
    int number = -1;
    ValueTraitsHelper<int>::fromString(&number, std::to_string(i));
    EXPECT_EQ(number, i);
    EXPECT_EQ(File::joinPath(getExePath(), "x").substr(getExePath().size()), "/x");
    EXPECT_EQ(CPUInfo().has_ssse3, CPUInfo().has_ssse3);
}

void useStaticProperty(int i) {
    p_shared.node()->set(i);
    EXPECT_LT(p_shared.get(), kRounds);
}

TEST(ThreadsServices, EveryServiceAtOnce) {
    static std::atomic<int> records{0};
    static std::atomic<int> assertions{0};
    initStaticProperties(PropertyNode::createRoot());
    setLogSink([](const LogRecord& record) { records += record.text.empty() ? 0 : 1; });
    setAssertionHandler([](const AssertionRecord& record) {
        assertions += record.text.empty() ? 0 : 1;
        return false;
    });
    using Work = void (*)(int);
    static constexpr Work kWorks[] = {useLog, useAssertions, useLibraries, useTexts, useStaticProperty};
    test::together(kThreads, [&](int t) {
        for (int i = 0; i < kRounds; ++i) {
            for (const Work work : kWorks) work(i);
            if (t == 0) setLogSink([](const LogRecord& record) { records += record.text.empty() ? 0 : 1; });
        }
    });
    setLogSink({});
    setAssertionHandler({});
    EXPECT_EQ(assertions, kThreads * kRounds);
    // Another thread may have raised the threshold between the two statements, so only those at level 4 are certain.
    EXPECT_GE(records, kThreads * kRounds);
}

}  // namespace
}  // namespace quill
