// A process without a free descriptor: the library's end, or its going on, is said in a record.
#include <dirent.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <string>

#include "common/assertion.h"
#include "tests/engines/test_engine.h"
#include "tests/support/log_capture.h"
#include "webrtc_common/se_wrapper/engine/load.h"
#include "webrtc_common/se_wrapper/engine/noise_test.h"
#include "webrtc_common/se_wrapper/records.h"

using namespace quill::media::se_wrapper;
using quill::test::ScopedLogCapture;
using quill::test::TestEngine;

namespace {

// No file can be opened while this exists.
class NoDescriptors {
  public:
    NoDescriptors() {
        ::getrlimit(RLIMIT_NOFILE, &before_);
        rlimit none = before_;
        none.rlim_cur = 0;
        ::setrlimit(RLIMIT_NOFILE, &none);
    }
    ~NoDescriptors() { ::setrlimit(RLIMIT_NOFILE, &before_); }
    NoDescriptors(const NoDescriptors&) = delete;
    NoDescriptors& operator=(const NoDescriptors&) = delete;

  private:
    rlimit before_{};
};

class WithoutDescriptors : public testing::Test {
  protected:
    void SetUp() override {
#ifdef __SANITIZE_ADDRESS__
        GTEST_SKIP() << "the sanitizer needs descriptors to look at an object's type";
#endif
    }
};

TEST_F(WithoutDescriptors, LoadingEndsInTheRecordOfTheLibrary) {
    const std::string name = "test_engines/full";
    EXPECT_FATAL_RECORD(
        {
            const NoDescriptors none;
            openSignalEssenceDynamicLibrary(name);
        },
        "check", record_sites::kLibraryNotOpened,
        "Check failed se_lib Could not open shared library at " + quill::test::enginePath(name));
}

TEST_F(WithoutDescriptors, TheReasonIsTraced) {
    EXPECT_DEATH(
        {
            quill::setLogThreshold(5);
            const NoDescriptors none;
            openSignalEssenceDynamicLibrary("test_engines/full");
        },
        "TRACE .*test_engines/full.*Too many open files");
}

TEST_F(WithoutDescriptors, NoiseTestResultsAreARecordOfLevelTwo) {
    openSignalEssenceDynamicLibrary("test_engines/full");
    const ScopedLogCapture log(2);
    {
        const NoDescriptors none;
        saveNoiseTestResults("results.txt");
    }
    EXPECT_EQ(log.texts(2),
              std::vector<std::string>{"Can't write noise test results to results.txt: Too many open files"});
}

TEST_F(WithoutDescriptors, AnAssertionIsReportedAndGoesOn) {
    const ScopedLogCapture log(2);
    const NoDescriptors none;
    EXPECT_FALSE(quill::handleAssertion("file", 1, "function", "Assertion failed: %s", "x"));
    EXPECT_EQ(log.texts(2), std::vector<std::string>{"Assertion failed: x"});
}

}  // namespace
