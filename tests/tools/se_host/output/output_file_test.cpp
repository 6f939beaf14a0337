// The output file is complete or absent.
#include <sys/stat.h>

#include <filesystem>

#include "tests/tools/se_host/host_test.h"

namespace se_host_test {
namespace {

class OutputFile : public HostTest {
  protected:
    OutputFile() { writeSound(path("in.wav"), patternedSound(320)); }
};

TEST_F(OutputFile, NothingButTheOutputIsLeft) {
    expectDone(process());
    EXPECT_EQ(files(), (std::vector<std::string>{"in.wav", "out.wav"}));
}

TEST_F(OutputFile, AnOlderOutputIsReplaced) {
    writeText("out.wav", "old");
    expectDone(process());
    EXPECT_EQ(readSound(path("out.wav")).frames(), 320u);
}

TEST_F(OutputFile, AFailureLeavesAnOlderOutputAlone) {
    writeText("out.wav", "old");
    EXPECT_EQ(process({"--engine", "no_such_engine"}).exit_code, kWrongUsage);
    EXPECT_EQ(std::filesystem::file_size(path("out.wav")), 3u);
}

TEST_F(OutputFile, ALinkStaysALink) {
    std::filesystem::create_symlink("real.wav", path("out.wav"));
    expectDone(process());
    EXPECT_TRUE(std::filesystem::is_symlink(path("out.wav")));
    EXPECT_EQ(readSound(path("real.wav")).frames(), 320u);
}

TEST_F(OutputFile, HasThePermissionsOfAnyNewFile) {
    writeText("plain", "");
    expectDone(process());
    EXPECT_EQ(std::filesystem::status(path("out.wav")).permissions(),
              std::filesystem::status(path("plain")).permissions());
}

}  // namespace
}  // namespace se_host_test
