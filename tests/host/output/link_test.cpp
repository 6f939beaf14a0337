// Links that lead to an output, and what somebody else may have planted in a folder for everybody.
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "host/output/output_file.h"
#include "tests/host/output/output_fixture.h"

namespace se_output_test {
namespace {

namespace fs = std::filesystem;

class LinkTest : public OutputTest {};

TEST_F(LinkTest, LeadsToItsTarget) {
    writeText("real", "old");
    fs::create_symlink("real", path("link"));
    write(path("link"), "new");
    EXPECT_TRUE(fs::is_symlink(path("link")));
    EXPECT_EQ(text("real"), "new");
}

TEST_F(LinkTest, LeadsToATargetThatIsNotThereYet) {
    fs::create_directory(path("folder"));
    fs::create_symlink("folder/real", path("link"));
    fs::create_symlink("link", path("other"));
    write(path("other"), "new");
    EXPECT_EQ(text("folder/real"), "new");
}

TEST_F(LinkTest, ACircleIsRefused) {
    fs::create_symlink("link", path("link"));
    EXPECT_EQ(failureOf([&] { write(path("link"), "new"); }),
              "cannot write '" + path("link") +
                  "': Too many levels of symbolic links; give an output path that you may write");
}

// A folder as /tmp, with what user 1234 planted.
class PlantedTest : public OutputTest {
  protected:
    void SetUp() override {
        if (::geteuid() != 0) GTEST_SKIP() << "needs root";
        fs::create_directory(path("shared"));
        ::chmod(path("shared").c_str(), 01777);
        writeText("precious", "old");
    }

    void link(unsigned owner) const {
        fs::create_symlink(path("precious"), path("shared/out"));
        ASSERT_EQ(::lchown(path("shared/out").c_str(), owner, owner), 0);
    }

    std::string denied() const {
        return "cannot write '" + path("shared/out") +
               "': Permission denied; give an output path that you may write";
    }
};

TEST_F(PlantedTest, ALinkOfSomebodyElseIsNotFollowed) {
    link(1234);
    EXPECT_EQ(failureOf([&] { write(path("shared/out"), "new"); }), denied());
    EXPECT_EQ(text("precious"), "old");
}

TEST_F(PlantedTest, ALinkOfTheFoldersOwnerIsFollowed) {
    ASSERT_EQ(::chown(path("shared").c_str(), 1234, 1234), 0);
    link(1234);
    write(path("shared/out"), "new");
    EXPECT_EQ(text("precious"), "new");
}

TEST_F(PlantedTest, OnesOwnLinkIsFollowed) {
    link(0);
    write(path("shared/out"), "new");
    EXPECT_EQ(text("precious"), "new");
}

TEST_F(PlantedTest, AFileOfSomebodyElseIsNotReplaced) {
    writeText("shared/out", "theirs");
    ASSERT_EQ(::chown(path("shared/out").c_str(), 1234, 1234), 0);
    EXPECT_EQ(failureOf([&] { write(path("shared/out"), "new"); }), denied());
    EXPECT_EQ(text("shared/out"), "theirs");
}

TEST_F(PlantedTest, ALinkInAnOrdinaryFolderIsFollowed) {
    ::chmod(path("shared").c_str(), 0755);
    link(1234);
    write(path("shared/out"), "new");
    EXPECT_EQ(text("precious"), "new");
}

}  // namespace
}  // namespace se_output_test
