// `se_host scene`: what it writes, and what it refuses.
#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "tests/tools/se_host/host_test.h"

namespace se_host_test {
namespace {

class SceneCommand : public HostTest {
  protected:
    // One second of recording, "out.wav", with more arguments.
    HostRun scene(const std::vector<std::string>& more = {}) const {
        std::vector<std::string> arguments{"scene", path("out.wav"), "--seconds", "1"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return run(arguments);
    }

    Sound written(const std::string& name) const { return readSound(path(name)); }
};

double levelOf(const std::vector<int16_t>& samples) {
    double energy = 0;
    for (const double sample : samples) energy += sample * sample;
    return 10 * std::log10(energy / static_cast<double>(samples.size())) - 20 * std::log10(32768);
}

bool isSilent(const std::vector<int16_t>& samples) {
    return samples == std::vector<int16_t>(samples.size());
}

TEST_F(SceneCommand, WritesEightChannelsAtSixteenKilohertz) {
    expectDone(scene());
    const Sound sound = written("out.wav");
    EXPECT_EQ(sound.channels, 8);
    EXPECT_EQ(sound.sample_rate, 16000);
    EXPECT_EQ(sound.frames(), 16000u);
    EXPECT_EQ(files(), std::vector<std::string>{"out.wav"});
}

TEST_F(SceneCommand, GivesTheSameRecordingEveryTime) {
    expectDone(scene());
    const Sound first = written("out.wav");
    expectDone(scene());
    EXPECT_EQ(written("out.wav").samples, first.samples);
    expectDone(scene({"--seed", "2"}));
    EXPECT_NE(written("out.wav").samples, first.samples);
}

TEST_F(SceneCommand, NoiseHasTheLevelAskedFor) {
    expectDone(scene({"--level", "none", "--sensor-noise", "-40"}));
    EXPECT_NEAR(levelOf(channelOf(written("out.wav"), 1)), -40, 0.5);
    expectDone(scene({"--level", "none", "--sensor-noise", "none", "--diffuse-noise", "-45"}));
    EXPECT_NEAR(levelOf(channelOf(written("out.wav"), 1)), -45, 0.5);
}

TEST_F(SceneCommand, TheDiffuseNoiseHasTheColourAskedFor) {
    const std::vector<std::string> pink{"--level",          "none", "--diffuse-noise", "-40",
                                        "--diffuse-colour", "pink"};
    expectDone(scene(pink));
    const Sound first = written("out.wav");
    expectDone(scene({"--level", "none", "--diffuse-noise", "-40", "--diffuse-colour", "white"}));
    EXPECT_NE(written("out.wav").samples, first.samples);
    expectDone(scene({"--level", "none", "--diffuse-noise", "-40"}));
    EXPECT_EQ(written("out.wav").samples, first.samples);
}

TEST_F(SceneCommand, EveryOptionOfTheTalkerAndTheRoomHasAnEffect) {
    expectDone(scene());
    const Sound plain = written("out.wav");
    const std::vector<std::vector<std::string>> changes = {
        {"--azimuth", "90"},
        {"--distance", "2"},
        {"--level", "-30"},
        {"--talker-start", "0.5"},
        {"--talker-end", "0.5"},
        {"--reverberation", "0.2"},
        {"--device-model"},
        {"--reverberation", "0.2", "--room", "5", "4", "2.5"},
        {"--dead-channel", "5"},
        {"--walk", "45"},
        {"--second-azimuth", "180", "--turn", "0.4"}};
    for (const auto& change : changes) {
        expectDone(scene(change));
        EXPECT_NE(written("out.wav").samples, plain.samples) << change[0];
    }
}

TEST_F(SceneCommand, WithoutEchoTheLoopbackIsSilent) {
    expectDone(scene());
    EXPECT_TRUE(isSilent(channelOf(written("out.wav"), 0)));
}

TEST_F(SceneCommand, TheLoopbackIsTheFarEnd) {
    expectDone(scene({"--echo", "-30", "--far-end-out", path("far.wav")}));
    const Sound far_end = written("far.wav");
    EXPECT_EQ(far_end.channels, 1);
    EXPECT_FALSE(isSilent(far_end.samples));
    EXPECT_EQ(channelOf(written("out.wav"), 0), far_end.samples);
}

TEST_F(SceneCommand, EveryOptionOfTheLoudspeakerHasAnEffect) {
    expectDone(scene({"--echo", "-30"}));
    const Sound plain = written("out.wav");
    const std::vector<std::vector<std::string>> changes = {{"--far-end-level", "-20"},
                                                           {"--echo-azimuth", "90"},
                                                           {"--echo-distance", "0.5"},
                                                           {"--echo-path-change", "0.5"},
                                                           {"--echo-delay", "12.3"},
                                                           {"--echo-drift", "200"},
                                                           {"--echo-jump", "0.5", "--echo-jump-by", "20"},
                                                           {"--loudspeaker-limit", "-30"}};
    for (auto change : changes) {
        change.insert(change.end(), {"--echo", "-30"});
        expectDone(scene(change));
        EXPECT_NE(written("out.wav").samples, plain.samples) << change[0];
    }
}

TEST_F(SceneCommand, PartsAddUpToTheRecordingWithinTheirRounding) {
    expectDone(scene({"--echo", "-30", "--parts", path("part")}));
    EXPECT_EQ(files(),
              (std::vector<std::string>{"out.wav", "part-echo.wav", "part-noise.wav", "part-talker.wav"}));
    const Sound whole = written("out.wav");
    const Sound talker = written("part-talker.wav");
    const Sound noise = written("part-noise.wav");
    const Sound echo = written("part-echo.wav");
    for (size_t i = 0; i < whole.samples.size(); ++i) {
        const int sum = talker.samples[i] + noise.samples[i] + echo.samples[i];
        ASSERT_LE(std::abs(whole.samples[i] - sum), 2) << "sample " << i;
    }
}

TEST_F(SceneCommand, SpeechComesFromAFilesFirstChannel) {
    Sound speech{16000, 2, std::vector<int16_t>(2 * 16000)};
    speech.samples[2 * 8000] = 10000;      // a click at half a second
    speech.samples[2 * 2000 + 1] = 10000;  // in the second channel
    writeSound(path("speech.wav"), speech);
    expectDone(scene({"--speech", path("speech.wav"), "--sensor-noise", "none"}));
    std::vector<int16_t> centre = channelOf(written("out.wav"), 1);
    centre.resize(7900);
    EXPECT_TRUE(isSilent(centre));
    EXPECT_FALSE(isSilent(channelOf(written("out.wav"), 1)));
}

TEST_F(SceneCommand, SpeechAtAnotherRateIsResampled) {
    Sound speech{48000, 1, std::vector<int16_t>(48000)};
    speech.samples[24000] = 10000;  // a click at half a second
    writeSound(path("speech.wav"), speech);
    expectDone(scene({"--speech", path("speech.wav"), "--sensor-noise", "none"}));
    const std::vector<int16_t> centre = channelOf(written("out.wav"), 1);
    const auto loudest = std::max_element(centre.begin(), centre.end()) - centre.begin();
    EXPECT_NEAR(static_cast<double>(loudest), 8000 + 16000 / 343.0, 2);  // one metre later
}

TEST_F(SceneCommand, TheSecondTalkersSpeechComesFromAFile) {
    writeSound(path("speech.wav"), Sound{16000, 1, std::vector<int16_t>(160)});
    expectDone(scene({"--second-azimuth", "180", "--turn", "0.5", "--second-speech", path("speech.wav"),
                      "--sensor-noise", "none"}));
    const std::vector<int16_t> centre = channelOf(written("out.wav"), 1);
    EXPECT_FALSE(isSilent({centre.begin(), centre.begin() + 8000}));
    EXPECT_TRUE(isSilent({centre.begin() + 8400, centre.end()}));  // the file is silent
}

TEST_F(SceneCommand, TheFarEndComesFromAFile) {
    writeSound(path("speech.wav"), Sound{16000, 1, std::vector<int16_t>(160, 1000)});
    expectDone(scene({"--echo", "-30", "--far-end-speech", path("speech.wav")}));
    const std::vector<int16_t> loopback = channelOf(written("out.wav"), 0);
    EXPECT_EQ(loopback, std::vector<int16_t>(16000, loopback[0]));
}

TEST_F(SceneCommand, ReportsWhatItWrote) {
    const HostRun result = scene({"--azimuth", "75"});
    expectDone(result);
    EXPECT_EQ(result.out, "wrote " + path("out.wav") +
                              "\n  sound     1.00 s, seed 1\n"
                              "  talker    -26.0 dBFS while speaking, at 75 degrees, 1 m\n"
                              "  noise     -65.0 dBFS\n"
                              "  echo      none\n");
}

TEST_F(SceneCommand, ReportsWhereTheTalkersAre) {
    const HostRun walking = scene({"--azimuth", "30", "--walk", "60"});
    EXPECT_NE(walking.out.find("at 30 to 90 degrees, 1 m"), std::string::npos) << walking.out;
    const HostRun two = scene({"--azimuth", "30", "--second-azimuth", "180"});
    EXPECT_NE(two.out.find("at 30 and 180 degrees, 1 m"), std::string::npos) << two.out;
}

TEST_F(SceneCommand, QuietPrintsNothing) {
    const HostRun result = scene({"--quiet"});
    expectDone(result);
    EXPECT_EQ(result.out, "");
}

}  // namespace
}  // namespace se_host_test
