// An output that does not fit, and a file system that takes none: one line, the older file whole, nothing else.
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <filesystem>

#include "host/output/output_file.h"
#include "host/output/temporaries.h"
#include "tests/host/output/output_fixture.h"

namespace se_output_test {
namespace {

using Names = std::vector<std::string>;

class FullDiskTest : public OutputTest {
  protected:
    FullDiskTest() {
        std::filesystem::create_directory(path("mount"));
        writeText("mount/out", "old");
    }

    // An output of 1 MiB.
    std::string failureOfLargeOutput() const {
        return failureOf([this] { write(path("mount/out"), std::string(1 << 20, 'x')); });
    }

    void expectOnlyTheOldFile() const {
        EXPECT_EQ(text("mount/out"), "old");
        size_t count = 0;
        for (const auto& entry : std::filesystem::directory_iterator(path("mount"))) count += entry.exists();
        EXPECT_EQ(count, 1u);
    }

    bool mountSmall(const char* options) const {
        if (!ownMounts() || ::mount("none", path("mount").c_str(), "tmpfs", 0, options) != 0) return false;
        writeText("mount/out", "old");
        return true;
    }

    std::string cannotWrite(const std::string& why) const {
        return "cannot write '" + path("mount/out") + "': " + why;
    }
};

TEST_F(FullDiskTest, AFullFileSystem) {
    if (!mountSmall("size=256k")) GTEST_SKIP() << "needs the right to mount";
    EXPECT_EQ(failureOfLargeOutput(),
              cannotWrite("No space left on device; make room there, or give another output path"));
    expectOnlyTheOldFile();
}

TEST_F(FullDiskTest, AFileSystemThatTakesNoMoreFiles) {
    if (!mountSmall("nr_inodes=2")) GTEST_SKIP() << "needs the right to mount";
    EXPECT_EQ(failureOfLargeOutput(),
              cannotWrite("No space left on device; make room there, or give another output path"));
    expectOnlyTheOldFile();
}

TEST_F(FullDiskTest, AReadOnlyFileSystem) {
    if (!mountSmall("size=4m")) GTEST_SKIP() << "needs the right to mount";
    ASSERT_EQ(::mount("none", path("mount").c_str(), nullptr, MS_REMOUNT | MS_RDONLY, nullptr), 0);
    EXPECT_EQ(failureOfLargeOutput(),
              cannotWrite("Read-only file system; give an output path that you may write"));
    expectOnlyTheOldFile();
}

TEST_F(FullDiskTest, ALimitOfFileSizes) {
    se_output::removeTemporaryFilesOnSignals();
    const rlimit limit{65536, 65536};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
    EXPECT_EQ(failureOfLargeOutput(),
              cannotWrite("File too large; raise the limit of file sizes (ulimit -f)"));
    expectOnlyTheOldFile();
}

TEST_F(FullDiskTest, AFullDevice) {
    EXPECT_EQ(
        failureOf([] { write("/dev/full", "new"); }),
        "cannot write '/dev/full': No space left on device; make room there, or give another output path");
}

}  // namespace
}  // namespace se_output_test
