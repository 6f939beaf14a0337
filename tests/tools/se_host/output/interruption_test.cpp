// A run that is interrupted leaves nothing behind. The probe engine raises the signal in the middle of a
// recording that asks for it.
#include <signal.h>

#include <filesystem>

#include "tests/tools/se_host/host_test.h"

namespace se_host_test {
namespace {

class Interruption : public HostTest, public ::testing::WithParamInterface<int> {
  protected:
    HostRun interrupt(int signal) const;
};

HostRun Interruption::interrupt(int signal) const {
    Sound recording{16000, 8, std::vector<int16_t>(8 * 1600, 0)};
    recording.samples[8 * 480 + 1] = 32123;
    recording.samples[8 * 481 + 1] = static_cast<int16_t>(signal);
    writeSound(path("in.wav"), recording);
    return process({"--engine", "test_engines/host_probe"});
}

TEST_P(Interruption, LeavesNoOutputAndNoTemporary) {
    const HostRun result = interrupt(GetParam());
    EXPECT_EQ(result.signal, GetParam());
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(files(), std::vector<std::string>{"in.wav"});
}

TEST_P(Interruption, LeavesAnOlderOutputWhole) {
    writeText("out.wav", "old");
    interrupt(GetParam());
    EXPECT_EQ(files(), (std::vector<std::string>{"in.wav", "out.wav"}));
    EXPECT_EQ(std::filesystem::file_size(path("out.wav")), 3u);
}

INSTANTIATE_TEST_SUITE_P(Host, Interruption, ::testing::Values(SIGINT, SIGTERM, SIGHUP, SIGQUIT));

}  // namespace
}  // namespace se_host_test
