// A file system on which nothing can be written.
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <fstream>
#include <string>

#include "tests/engines/test_engine.h"
#include "tests/support/log_capture.h"
#include "webrtc_common/se_wrapper/engine/load.h"
#include "webrtc_common/se_wrapper/engine/noise_test.h"

using namespace quill::media::se_wrapper;
using quill::test::ScopedLogCapture;

namespace {

void write(const char* file, const std::string& text) {
    std::ofstream(file) << text;
}

// The temporary folder of this process alone becomes a read-only one of its own.
bool makeTemporaryFolderReadOnly() {
    const std::string user = "0 " + std::to_string(::getuid()) + " 1\n";
    if (::unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) return false;
    write("/proc/self/setgroups", "deny");
    write("/proc/self/uid_map", user);
    if (::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0) return false;
    return ::mount("none", "/tmp", "tmpfs", MS_RDONLY, nullptr) == 0;
}

TEST(ReadOnlyFileSystem, NoiseTestResultsAreARecordOfLevelTwo) {
    openSignalEssenceDynamicLibrary("test_engines/full");
    if (!makeTemporaryFolderReadOnly()) GTEST_SKIP() << "the system allows no mount of its own";
    const ScopedLogCapture log(2);
    saveNoiseTestResults("/tmp/results.txt");
    EXPECT_EQ(log.texts(2), std::vector<std::string>{
                                "Can't write noise test results to /tmp/results.txt: Read-only file system"});
}

}  // namespace
