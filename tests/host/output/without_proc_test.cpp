// Without /proc a file without a name could not be named later, so the temporary has a name from the beginning;
// the same holds for file systems that know no files without a name.
#include <signal.h>
#include <sys/mount.h>
#include <sys/stat.h>

#include "host/output/output_file.h"
#include "host/output/temporaries.h"
#include "tests/host/output/output_fixture.h"

namespace se_output_test {
namespace {

using se_output::OutputFile;
using Names = std::vector<std::string>;

class WithoutProcTest : public OutputTest {
  protected:
    void SetUp() override {
        se_output::removeTemporaryFilesOnSignals();
        if (!ownMounts() || ::mount("none", "/proc", "tmpfs", 0, "size=4k") != 0) {
            GTEST_SKIP() << "needs the right to mount";
        }
        writeText("out", "old");
    }

    void TearDown() override { ::umount2("/proc", MNT_DETACH); }

    // Both of the old output and the temporary are there.
    void expectATemporary() const { EXPECT_EQ(files().size(), 2u); }
};

TEST_F(WithoutProcTest, AnOutputIsReplaced) {
    ::chmod(path("out").c_str(), 0640);
    OutputFile file(path("out"));
    file.write("new");
    expectATemporary();
    EXPECT_EQ(text("out"), "old");
    file.commit();
    EXPECT_EQ(text("out"), "new");
    EXPECT_EQ(files(), Names{"out"});
    struct stat status {};
    ASSERT_EQ(::stat(path("out").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0640u);
}

TEST_F(WithoutProcTest, NothingIsLeftOfOneThatIsNotCommitted) {
    {
        OutputFile file(path("out"));
        expectATemporary();
    }
    EXPECT_EQ(files(), Names{"out"});
    EXPECT_EQ(text("out"), "old");
}

TEST_F(WithoutProcTest, NothingIsLeftOfAnInterruptedProcess) {
    runInChild([this] {
        OutputFile file(path("out"));
        expectATemporary();
        raise(SIGTERM);
    });
    EXPECT_EQ(files(), Names{"out"});
}

TEST_F(WithoutProcTest, TheParentRemovesWhatAKilledProcessLeft) {
    const pid_t child = runInChild([this] {
        OutputFile file(path("out"));
        raise(SIGKILL);
    });
    expectATemporary();
    se_output::removeTemporaryFilesOf(child);
    EXPECT_EQ(files(), Names{"out"});
}

}  // namespace
}  // namespace se_output_test
