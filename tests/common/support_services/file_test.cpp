#include "common/file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <string>

namespace quill {
namespace {

TEST(JoinPath, JoinsADirectoryAndAName) {
    EXPECT_EQ(File::joinPath("/opt/app", "selibs"), "/opt/app/selibs");
}

TEST(JoinPath, PutsExactlyOneSeparatorBetweenTheOperands) {
    EXPECT_EQ(File::joinPath("/opt/app/", "selibs"), "/opt/app/selibs");
    EXPECT_EQ(File::joinPath("/opt/app", "/selibs"), "/opt/app/selibs");
    EXPECT_EQ(File::joinPath("/opt/app//", "//selibs"), "/opt/app/selibs");
}

TEST(JoinPath, LeavesSeparatorsElsewhereAlone) {
    EXPECT_EQ(File::joinPath("//opt//app", "a//b/"), "//opt//app/a//b/");
}

TEST(JoinPath, PutsOneSeparatorBesideEmptyOperands) {
    EXPECT_EQ(File::joinPath("", "selibs"), "/selibs");
    EXPECT_EQ(File::joinPath("/opt", ""), "/opt/");
    EXPECT_EQ(File::joinPath("", ""), "/");
    EXPECT_EQ(File::joinPath("/", "selibs"), "/selibs");
}

TEST(DirectoryOf, IsThePathUpToTheLastSeparator) {
    EXPECT_EQ(File::directoryOf("/opt/app/program"), "/opt/app");
    EXPECT_EQ(File::directoryOf("relative/program"), "relative");
    EXPECT_EQ(File::directoryOf("/opt/app/"), "/opt/app");
}

TEST(DirectoryOf, OfAFileInTheRootDirectoryIsTheSeparator) {
    EXPECT_EQ(File::directoryOf("/program"), "/");
    EXPECT_EQ(File::joinPath(File::directoryOf("/program"), "selibs"), "/selibs");
}

TEST(DirectoryOf, OfANameAloneIsEmpty) {
    EXPECT_EQ(File::directoryOf("program"), "");
    EXPECT_EQ(File::directoryOf(""), "");
}

TEST(ExePath, IsTheDirectoryOfTheRunningProgram) {
    struct stat expected;
    struct stat found;
    ASSERT_EQ(stat("/proc/self/exe", &expected), 0);
    ASSERT_EQ(stat(File::joinPath(getExePath(), "common_support_tests").c_str(), &found), 0);
    EXPECT_EQ(found.st_ino, expected.st_ino);
    EXPECT_EQ(found.st_dev, expected.st_dev);
}

TEST(ExePath, IsAbsoluteWithoutASeparatorAtItsEnd) {
    const std::string path = getExePath();
    ASSERT_FALSE(path.empty());
    EXPECT_EQ(path.front(), '/');
    EXPECT_NE(path.back(), '/');
}

}  // namespace
}  // namespace quill
