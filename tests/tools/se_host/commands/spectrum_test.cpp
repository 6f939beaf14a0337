// `se_host spectrum`: levels and frequencies, and what it refuses.
#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>

#include "tests/tools/se_host/host_test.h"

namespace se_host_test {
namespace {

class SpectrumCommand : public HostTest {
  protected:
    HostRun spectrum(const std::vector<std::string>& more = {}) const {
        std::vector<std::string> arguments{"spectrum", path("in.wav")};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return run(arguments);
    }

    nlohmann::json json(std::vector<std::string> more = {}) const {
        more.emplace_back("--json");
        const HostRun result = spectrum(more);
        expectDone(result);
        return nlohmann::json::parse(result.out);
    }
};

Sound tone(double hertz, double amplitude, int sample_rate = 16000) {
    Sound sound{sample_rate, 1, {}};
    for (int i = 0; i < sample_rate; ++i) {
        sound.samples.push_back(static_cast<int16_t>(
            std::lround(amplitude * std::sin(2 * 3.14159265358979323846 * hertz * i / sample_rate))));
    }
    return sound;
}

size_t loudestBin(const nlohmann::json& levels) {
    return static_cast<size_t>(std::max_element(levels.begin(), levels.end()) - levels.begin());
}

TEST_F(SpectrumCommand, AFullScaleSineHasZeroDecibelsAtItsFrequency) {
    writeSound(path("in.wav"), tone(1000, 32767));
    const nlohmann::json answer = json();
    EXPECT_EQ(answer["hertz_per_bin"], 15.625);
    EXPECT_EQ(answer["dbfs"].size(), 512u);
    EXPECT_EQ(loudestBin(answer["dbfs"]), 64u);
    EXPECT_NEAR(answer["dbfs"][64], 0, 0.01);
    EXPECT_LT(answer["dbfs"][200], -90);
}

TEST_F(SpectrumCommand, HalfTheAmplitudeIsSixDecibelsLess) {
    writeSound(path("in.wav"), tone(1000, 16384));
    EXPECT_NEAR(json()["dbfs"][64], -6.02, 0.01);
}

TEST_F(SpectrumCommand, AConstantIsAtZeroHertz) {
    writeSound(path("in.wav"), Sound{16000, 1, std::vector<int16_t>(16000, -16384)});
    const nlohmann::json levels = json()["dbfs"];
    EXPECT_NEAR(levels[0], -6.02, 0.01);
    EXPECT_LT(levels[10], -90);
}

TEST_F(SpectrumCommand, FrequenciesAreThoseOfTheFilesOwnRate) {
    writeSound(path("in.wav"), tone(10000, 20000, 44100));
    const nlohmann::json answer = json({"--size", "4096"});
    const double hertz = answer["hertz_per_bin"];
    EXPECT_NEAR(static_cast<double>(loudestBin(answer["dbfs"])) * hertz, 10000, hertz);
}

TEST_F(SpectrumCommand, IsThatOfTheChannelAskedFor) {
    Sound both{16000, 2, std::vector<int16_t>(32000)};
    const Sound one = tone(2000, 10000);
    for (size_t i = 0; i < 16000; ++i) both.samples[2 * i + 1] = one.samples[i];
    writeSound(path("in.wav"), both);
    EXPECT_EQ(json()["dbfs"][128], nullptr);  // silence
    EXPECT_EQ(loudestBin(json({"--channel", "1"})["dbfs"]), 128u);
}

TEST_F(SpectrumCommand, TheTextNamesTheHighestPeaks) {
    writeSound(path("in.wav"), tone(1000, 16384));
    const HostRun result = spectrum();
    expectDone(result);
    EXPECT_NE(result.out.find("\n  peaks     -6.0 dBFS at 1000 Hz\n"), std::string::npos) << result.out;
    EXPECT_NE(result.out.find("512 bins of 15.62 Hz, mean of 30 pieces of 1024 samples\n"),
              std::string::npos);
}

class BadSpectrum : public SpectrumCommand {
  protected:
    BadSpectrum() {
        writeSound(path("in.wav"), tone(1000, 1000));
        noteFiles();
    }
};

TEST_F(BadSpectrum, AChannelThatTheSoundDoesNotHave) {
    expectRefused(spectrum({"--channel", "1", "--plot", path("out.png")}), kWrongUsage,
                  "--channel 1 does not exist");
}

TEST_F(BadSpectrum, PiecesLongerThanTheSound) {
    expectRefused(spectrum({"--size", "16384", "--plot", path("out.png")}), kWrongUsage,
                  "has 16000 samples a channel, fewer than the pieces of 16384");
}

TEST_F(BadSpectrum, ASizeThatIsOddOrOutOfRange) {
    for (const char* size : {"1023", "0", "-2", "65536", "many"}) {
        expectRefused(spectrum({"--size", size}), kWrongUsage, std::string("not ") + size);
    }
}

// Twice a prime number: each piece would take as long as a hundred of the next size.
TEST_F(BadSpectrum, ASizeThatTakesLong) {
    expectRefused(spectrum({"--size", "8198"}), kWrongUsage,
                  "an even number from 16 to 32768 without prime factors above 7 is needed, not 8198");
    expectDone(spectrum({"--size", "8820"}));
}

TEST_F(BadSpectrum, AFileThatIsNoSound) {
    writeText("in.wav", "Dear diary, today I recorded nothing.\n");
    noteFiles();
    expectRefused(spectrum({"--plot", path("out.png")}), kFailure, "not a sound file");
}

}  // namespace
}  // namespace se_host_test
