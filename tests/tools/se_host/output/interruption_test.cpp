// A run that is interrupted leaves nothing behind. The probe engine raises the signal in the middle of a
// recording that asks for it.
#include <signal.h>

#include "tests/tools/se_host/host_test.h"

namespace se_host_test {
namespace {

class Interruption : public HostTest, public ::testing::WithParamInterface<int> {};

TEST_P(Interruption, LeavesNoOutputAndNoTemporary) {
    Sound recording{16000, 8, std::vector<int16_t>(8 * 1600, 0)};
    recording.samples[8 * 480 + 1] = 32123;
    recording.samples[8 * 481 + 1] = static_cast<int16_t>(GetParam());
    writeSound(path("in.wav"), recording);

    const HostRun result = process({"--engine", "test_engines/host_probe"});
    EXPECT_EQ(result.signal, GetParam());
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(files(), std::vector<std::string>{"in.wav"});
}

INSTANTIATE_TEST_SUITE_P(Host, Interruption, ::testing::Values(SIGINT, SIGTERM, SIGHUP));

}  // namespace
}  // namespace se_host_test
