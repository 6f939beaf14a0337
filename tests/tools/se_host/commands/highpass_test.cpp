// `se_host highpass`: its output, and what it refuses.
#include <algorithm>

#include "tests/tools/se_host/host_test.h"

namespace se_host_test {
namespace {

class Highpass : public HostTest {
  protected:
    HostRun highpass(const std::vector<std::string>& more = {}) const {
        std::vector<std::string> arguments{"highpass", path("in.wav"), path("out.wav")};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return run(arguments);
    }

    Sound filtered(const Sound& sound, const std::vector<std::string>& more = {}) {
        writeSound(path("in.wav"), sound);
        expectDone(highpass(more));
        return readSound(path("out.wav"));
    }
};

TEST_F(Highpass, ReducesAConstantToTheDcLeakOfItsTaps) {
    const Sound out = filtered(Sound{16000, 1, std::vector<int16_t>(1000, 1000)});
    ASSERT_EQ(out.frames(), 1000u);
    for (size_t i = 27; i < 973; ++i) EXPECT_EQ(out.samples[i], -8) << i;
}

TEST_F(Highpass, AtGainZeroGivesEverySampleUnchanged) {
    for (const size_t frames : {1u, 27u, 28u, 132u, 133u, 160u, 1000u}) {
        const Sound in = patternedSound(frames, 1);
        EXPECT_EQ(filtered(in, {"--gain", "0"}).samples, in.samples) << frames;
    }
}

TEST_F(Highpass, KeepsAClickAtItsTime) {
    for (const size_t place : {0u, 500u, 999u}) {
        Sound in{16000, 1, std::vector<int16_t>(1000)};
        in.samples[place] = 30000;
        const std::vector<int16_t> out = filtered(in).samples;
        EXPECT_EQ(std::max_element(out.begin(), out.end()) - out.begin(), static_cast<std::ptrdiff_t>(place));
    }
}

TEST_F(Highpass, AtGainOneHalfLeavesHalfOfAConstant) {
    const Sound out = filtered(Sound{16000, 1, std::vector<int16_t>(1000, 1000)}, {"--gain", "0.5"});
    for (size_t i = 27; i < 973; ++i) EXPECT_EQ(out.samples[i], 496) << i;
}

TEST_F(Highpass, FiltersEachChannelByItself) {
    const Sound in = patternedSound(777, 3);
    const Sound all = filtered(in);
    EXPECT_EQ(all.channels, 3);
    EXPECT_EQ(all.frames(), 777u);
    for (int channel = 0; channel < 3; ++channel) {
        const Sound alone = filtered(Sound{16000, 1, channelOf(in, channel)});
        EXPECT_EQ(channelOf(all, channel), alone.samples) << channel;
    }
}

TEST_F(Highpass, WorksAtSixteenKilohertzForEveryFile) {
    const Sound out = filtered(Sound{48000, 1, std::vector<int16_t>(4800, 1000)});
    EXPECT_EQ(out.sample_rate, 16000);
    EXPECT_EQ(out.frames(), 1600u);
    EXPECT_EQ(out.samples[800], -8);
}

TEST_F(Highpass, ReportsWhatItDid) {
    writeSound(path("in.wav"), Sound{16000, 1, std::vector<int16_t>(1600, 3277)});
    const HostRun result = highpass();
    expectDone(result);
    EXPECT_EQ(result.out.rfind(path("in.wav") + " -> " + path("out.wav") +
                                   "\n  sound     0.10 s, 1 channel\n"
                                   "  filter    600 Hz high-pass, gain 1\n"
                                   "  level     -20.0 dBFS in channel 0, ",
                               0),
              0u)
        << result.out;
    const HostRun quiet = highpass({"--quiet"});
    expectDone(quiet);
    EXPECT_EQ(quiet.out, "");
}

class BadHighpass : public Highpass {
  protected:
    BadHighpass() {
        writeSound(path("in.wav"), patternedSound(500, 2));
        noteFiles();
    }
};

TEST_F(BadHighpass, AGainThatIsNoShare) {
    for (const char* gain : {"1.5", "-0.1", "nan", "inf", "much"}) {
        expectRefused(highpass({"--gain", gain}), kWrongUsage, std::string("0 to 1 is needed, not ") + gain);
    }
}

TEST_F(BadHighpass, AChannelThatTheSoundDoesNotHave) {
    expectRefused(highpass({"--channel", "2"}), kWrongUsage, "--channel 2 does not exist");
}

TEST_F(BadHighpass, ASoundTooShortForItsPicture) {
    expectRefused(highpass({"--plot", path("out.png")}), kWrongUsage, "is too short for --plot");
}

TEST_F(BadHighpass, AnOutputThatIsTheInput) {
    expectRefused(run({"highpass", path("in.wav"), path("in.wav")}), kWrongUsage, "is one of the inputs");
}

TEST_F(BadHighpass, APictureInPlaceOfTheOutput) {
    expectRefused(run({"highpass", path("in.wav"), path("x.png"), "--plot", path("x.png")}), kWrongUsage,
                  "would be written twice");
}

TEST_F(BadHighpass, AFileThatIsNoSound) {
    writeText("in.wav", "Dear diary, today I recorded nothing.\n");
    noteFiles();
    expectRefused(highpass(), kFailure, "not a sound file");
}

}  // namespace
}  // namespace se_host_test
