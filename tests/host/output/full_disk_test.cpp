// An output that does not fit, and a file system that takes none: one line, the older file whole, nothing else.
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <iterator>

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

// From now on the kernel answers each write but to the standard streams as it does when the user's quota is used up.
bool useUpQuota() {
    sock_filter rules[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_write, 1, 0),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_pwrite64, 0, 3),
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, args)),
        BPF_JUMP(BPF_JMP | BPF_JGT | BPF_K, STDERR_FILENO, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EDQUOT),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    const sock_fprog program{std::size(rules), rules};
    return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

TEST_F(FullDiskTest, AQuotaThatIsUsedUp) {
    ASSERT_TRUE(useUpQuota());
    EXPECT_EQ(failureOfLargeOutput(),
              cannotWrite("Disk quota exceeded; make room there, or give another output path"));
    expectOnlyTheOldFile();
}

TEST_F(FullDiskTest, AFullDevice) {
    EXPECT_EQ(
        failureOf([] { write("/dev/full", "new"); }),
        "cannot write '/dev/full': No space left on device; make room there, or give another output path");
}

}  // namespace
}  // namespace se_output_test
