// Far ends that do not match the recording.
#include "tests/tools/se_host/host_test.h"

namespace se_host_test {
namespace {

class BadFarEnd : public HostTest {
  protected:
    BadFarEnd() { writeSound(path("in.wav"), patternedSound(320)); }

    HostRun processWith(const Sound& far_end) {
        writeSound(path("far.wav"), far_end);
        noteFiles();
        return process({"--far-end", path("far.wav")});
    }
};

TEST_F(BadFarEnd, AFileThatDoesNotExist) {
    noteFiles();
    expectRefused(process({"--far-end", path("far.wav")}), kFailure, "far.wav': No such file");
}

TEST_F(BadFarEnd, AnotherRate) {
    expectRefused(processWith(patternedSound(960, 1, 48000)), kFailure,
                  "far.wav' is at 48000 Hz and the recording at 16000 Hz; bring both to the same rate");
}

TEST_F(BadFarEnd, ShorterThanTheRecording) {
    expectRefused(processWith(patternedSound(319, 1)), kFailure,
                  "far.wav' is shorter than the recording (319 of 320 frames); pad it with silence");
}

TEST_F(BadFarEnd, MoreThanOneChannel) {
    expectRefused(processWith(patternedSound(320, 2)), kFailure, "far.wav' has 2 channels; mix it down");
}

TEST_F(BadFarEnd, AChannelThatTheRecordingLacks) {
    noteFiles();
    expectRefused(process({"--far-end-channel", "8"}), kWrongUsage,
                  "--far-end-channel 8 does not exist; '" + path("in.wav") + "' has the channels 0 to 7");
}

TEST_F(BadFarEnd, ANegativeChannel) {
    noteFiles();
    expectRefused(process({"--far-end-channel=-1"}), kWrongUsage, "--far-end-channel -1 does not exist");
}

TEST_F(BadFarEnd, AFileAndAChannel) {
    noteFiles();
    expectRefused(process({"--far-end", path("far.wav"), "--far-end-channel", "0"}), kWrongUsage,
                  "--far-end excludes --far-end-channel; see 'se_host process --help'");
}

}  // namespace
}  // namespace se_host_test
