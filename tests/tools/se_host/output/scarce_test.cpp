// A process that may open few files, or write short ones: each command is done, or ends in one line and leaves what was
// there.
#include <fstream>
#include <sstream>

#include "tests/tools/se_host/host_test.h"

namespace se_host_test {
namespace {

class Scarce : public HostTest {
  protected:
    Scarce() {
        writeSound(path("in.wav"), patternedSound(16000));
        writeText("out.wav", "old");
        noteFiles();
    }

    std::string content(const std::string& name) const {
        std::ostringstream text;
        text << std::ifstream(path(name), std::ios::binary).rdbuf();
        return text.str();
    }
};

// With fewer the program itself is not loaded.
TEST_F(Scarce, FewDescriptors) {
    bool done = false;
    for (int most = 5; most < 64 && !done; ++most) {
        const HostRun result =
            shell("ulimit -n " + std::to_string(most) + "; se_host process in.wav out.wav --quiet");
        SCOPED_TRACE(std::to_string(most) + " descriptors");
        done = result.exit_code == 0;
        if (done) break;
        expectRefused(result, result.exit_code, "");
        EXPECT_EQ(result.signal, 0);
        EXPECT_EQ(content("out.wav"), "old");
    }
    EXPECT_TRUE(done);
    EXPECT_EQ(readSound(path("out.wav")).frames(), 16000u);
}

// The limit counts blocks of 512 bytes; the sound has 32 kB.
TEST_F(Scarce, ShortFiles) {
    const HostRun result = shell("ulimit -f 20; se_host process in.wav out.wav --quiet");
    expectRefused(result, kFailure, "cannot write 'out.wav'");
    EXPECT_EQ(content("out.wav"), "old");
}

TEST_F(Scarce, ShortTunings) {
    writeText("a.json", "old");
    noteFiles();
    const HostRun result = shell("ulimit -f 1; se_host diags dump a.json");
    expectRefused(result, kFailure,
                  "cannot write 'a.json': File too large; raise the limit of file sizes (ulimit -f)");
    EXPECT_EQ(content("a.json"), "old");
}

}  // namespace
}  // namespace se_host_test
