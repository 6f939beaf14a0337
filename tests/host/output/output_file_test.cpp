// A file is complete or absent, and keeps what an older one had.
#include "host/output/output_file.h"

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <climits>
#include <csignal>
#include <filesystem>

#include "tests/host/output/output_fixture.h"

namespace se_output_test {
namespace {

using se_output::OutputFile;
using Names = std::vector<std::string>;

class OutputFileTest : public OutputTest {
  protected:
    struct stat statusOf(const std::string& name) const {
        struct stat status {};
        EXPECT_EQ(::stat(path(name).c_str(), &status), 0);
        return status;
    }
};

TEST_F(OutputFileTest, HasItsContentAfterTheCommit) {
    write(path("out"), "new");
    EXPECT_EQ(text("out"), "new");
    EXPECT_EQ(files(), Names{"out"});
}

TEST_F(OutputFileTest, AnOlderFileIsWholeUntilTheCommit) {
    writeText("out", "old");
    OutputFile file(path("out"));
    file.write("new");
    EXPECT_EQ(text("out"), "old");
    file.commit();
    EXPECT_EQ(text("out"), "new");
}

TEST_F(OutputFileTest, NothingIsLeftOfOneThatIsNotCommitted) {
    OutputFile(path("out")).write("new");
    EXPECT_EQ(files(), Names{});
}

TEST_F(OutputFileTest, AnOlderFileIsWholeWhenTheWriterIsKilled) {
    writeText("out", "old");
    runInChild([this] {
        OutputFile file(path("out"));
        file.write("new");
        raise(SIGKILL);
    });
    EXPECT_EQ(text("out"), "old");
    EXPECT_EQ(files(), Names{"out"});
}

TEST_F(OutputFileTest, HasThePermissionsOfAnyNewFile) {
    ::umask(027);
    write(path("out"), "new");
    EXPECT_EQ(statusOf("out").st_mode & 07777, 0640u);
}

TEST_F(OutputFileTest, KeepsThePermissionsOfAnOlderOne) {
    writeText("out", "old");
    ::chmod(path("out").c_str(), 0600);
    write(path("out"), "new");
    EXPECT_EQ(statusOf("out").st_mode & 07777, 0600u);
}

TEST_F(OutputFileTest, DoesNotLendAnOwnersRights) {
    writeText("out", "old");
    ::chmod(path("out").c_str(), 06755);
    write(path("out"), "new");
    EXPECT_EQ(statusOf("out").st_mode & 07777, 0755u);
}

TEST_F(OutputFileTest, KeepsTheOwnerOfAnOlderOne) {
    if (::geteuid() != 0) GTEST_SKIP() << "needs root";
    writeText("out", "old");
    ASSERT_EQ(::chown(path("out").c_str(), 1234, 4321), 0);
    write(path("out"), "new");
    EXPECT_EQ(statusOf("out").st_uid, 1234u);
    EXPECT_EQ(statusOf("out").st_gid, 4321u);
}

TEST_F(OutputFileTest, MayHaveTheLongestName) {
    const std::string name(NAME_MAX, 'x');
    write(path(name), "new");
    EXPECT_EQ(text(name), "new");
}

TEST_F(OutputFileTest, StaysInItsFolderWhenTheWorkingFolderChanges) {
    std::filesystem::current_path(path(""));
    OutputFile file("out");
    file.write("new");
    std::filesystem::current_path("/");
    file.commit();
    EXPECT_EQ(text("out"), "new");
}

TEST_F(OutputFileTest, APathThatIsTooLongIsNamed) {
    std::string longest;
    for (int i = 0; i < 32768; ++i) longest += "a/";
    EXPECT_NE(failureOf([&] { OutputFile file(longest + "out"); }).find("File name too long"),
              std::string::npos);
}

TEST_F(OutputFileTest, AFolderIsRefused) {
    EXPECT_EQ(failureOf([&] { OutputFile file(path("")); }),
              "cannot write '" + path("") + "': not a regular file; give an output path that you may write");
}

TEST_F(OutputFileTest, AFolderThatIsNotThereIsRefused) {
    EXPECT_EQ(failureOf([&] { OutputFile file(path("nowhere/out")); }),
              "cannot write '" + path("nowhere/out") +
                  "': No such file or directory; give an output path that you may write");
    EXPECT_EQ(failureOf([&] { OutputFile file(path("nowhere/")); }),
              "cannot write '" + path("nowhere/") +
                  "': not a regular file; give an output path that you may write");
}

TEST_F(OutputFileTest, AFolderOfSomebodyElseIsRefused) {
    if (::geteuid() != 0) GTEST_SKIP() << "needs root";
    becomeNobody();
    EXPECT_EQ(
        failureOf([&] { OutputFile file(path("out")); }),
        "cannot write '" + path("out") + "': Permission denied; give an output path that you may write");
}

TEST_F(OutputFileTest, AFileThatMayNotBeWrittenIsRefused) {
    if (::geteuid() != 0) GTEST_SKIP() << "needs root";
    ::chmod(path("").c_str(), 0777);
    writeText("out", "old");
    becomeNobody();
    EXPECT_NE(failureOf([&] { OutputFile file(path("out")); }).find("Permission denied"), std::string::npos);
}

TEST_F(OutputFileTest, NoDescriptorsLeftIsOneError) {
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer's check of an exception's type needs descriptors of its own";
#endif
    OutputFile first(path("first"));
    for (rlim_t most = 3; most < 12; ++most) {
        const rlimit limit{most, 4096};
        ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &limit), 0);
        const std::string failure = failureOf([&] { write(path("out"), "new"); });
        const rlimit enough{4096, 4096};
        ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &enough), 0);
        if (failure.empty()) break;
        EXPECT_NE(failure.find("Too many open files; raise the limit of open files"), std::string::npos)
            << failure;
        EXPECT_EQ(files(), Names{});
    }
    EXPECT_EQ(text("out"), "new");
}

}  // namespace
}  // namespace se_output_test
