// The progress bar: on a terminal only, and not with --quiet.
#include "tests/tools/se_host/host_test.h"

namespace se_host_test {
namespace {

class Terminal : public HostTest {
  protected:
    Terminal() { writeSound(path("in.wav"), patternedSound(16000)); }

    std::string shown(std::vector<std::string> more) {
        more.insert(more.begin(), {"process", path("in.wav"), path("out.wav")});
        const HostRun result = runOnTerminal(more);
        EXPECT_EQ(result.exit_code, 0);
        return result.err;
    }
};

TEST_F(Terminal, ProgressReachesTheEnd) {
    const std::string text = shown({});
    EXPECT_NE(text.find("100%"), std::string::npos) << text;
    EXPECT_NE(text.find(std::string(51, '*') + "\r\n"), std::string::npos) << text;
}

TEST_F(Terminal, QuietShowsNoProgress) {
    EXPECT_EQ(shown({"--quiet"}), "");
}

}  // namespace
}  // namespace se_host_test
