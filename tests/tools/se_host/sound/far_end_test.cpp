// The far end reaches the engine block by block, each before the microphones of the same time. The probe
// engine returns the far-end block as its output.
#include "tests/tools/se_host/host_test.h"

namespace se_host_test {
namespace {

class FarEnd : public HostTest {
  protected:
    FarEnd() { writeSound(path("in.wav"), recording_); }

    std::vector<int16_t> seenByTheEngine(std::vector<std::string> more) {
        more.insert(more.end(), {"--engine", "test_engines/host_probe"});
        expectDone(process(more));
        return readSound(path("out.wav")).samples;
    }

    const Sound recording_ = patternedSound(1000);
};

TEST_F(FarEnd, AFileReachesTheEngineInStep) {
    const Sound far_end = patternedSound(1000, 1);
    writeSound(path("far.wav"), far_end);
    EXPECT_EQ(seenByTheEngine({"--far-end", path("far.wav")}), far_end.samples);
}

TEST_F(FarEnd, ALongerFileIsCut) {
    Sound far_end = patternedSound(2000, 1);
    writeSound(path("far.wav"), far_end);
    far_end.samples.resize(1000);
    EXPECT_EQ(seenByTheEngine({"--far-end", path("far.wav")}), far_end.samples);
}

TEST_F(FarEnd, AChannelOfTheRecordingReachesTheEngineInStep) {
    EXPECT_EQ(seenByTheEngine({"--far-end-channel", "3"}), channelOf(recording_, 3));
}

TEST_F(FarEnd, WithoutOneTheLoudspeakerIsSilent) {
    EXPECT_EQ(seenByTheEngine({}), std::vector<int16_t>(1000, 0));
}

TEST_F(FarEnd, ItIsResampledWithTheRecording) {
    writeSound(path("in.wav"), patternedSound(3000, 8, 48000));
    writeSound(path("far.wav"), Sound{48000, 1, std::vector<int16_t>(3000, 8000)});
    const std::vector<int16_t> seen = seenByTheEngine({"--far-end", path("far.wav")});
    ASSERT_EQ(seen.size(), 1000u);
    EXPECT_NEAR(seen[500], 8000, 1);
}

}  // namespace
}  // namespace se_host_test
