// Sample formats of the recording. With the engine bypassed the output is channel 7, so it shows how each
// sample was converted.
#include <sndfile.h>

#include <cmath>
#include <limits>

#include "tests/tools/se_host/host_test.h"

namespace se_host_test {
namespace {

class Formats : public HostTest {
  protected:
    // Channel 7 of the recording as the host read it.
    std::vector<int16_t> bypassed() {
        expectDone(process({"--bypass"}));
        return readSound(path("out.wav")).samples;
    }

    // Writes a constant value to all channels. result: the output.
    int16_t arrives(double value, int format) {
        writeSound(path("in.wav"), std::vector<double>(8 * 160, value), 8, format);
        return bypassed().at(0);
    }
};

// Every 16-bit sample arrives unchanged from each format that holds it exactly.
class ExactFormats : public Formats, public ::testing::WithParamInterface<int> {};

TEST_P(ExactFormats, KeepEverySample) {
    const Sound sound = patternedSound(70000);
    writeSound(path("in.wav"), sound, GetParam());
    EXPECT_EQ(bypassed(), channelOf(sound, 7));
}

INSTANTIATE_TEST_SUITE_P(Host, ExactFormats,
                         ::testing::Values(SF_FORMAT_WAV | SF_FORMAT_PCM_16, SF_FORMAT_WAV | SF_FORMAT_PCM_24,
                                           SF_FORMAT_WAV | SF_FORMAT_PCM_32, SF_FORMAT_WAV | SF_FORMAT_FLOAT,
                                           SF_FORMAT_WAV | SF_FORMAT_DOUBLE,
                                           SF_FORMAT_WAVEX | SF_FORMAT_PCM_16,
                                           SF_FORMAT_RF64 | SF_FORMAT_PCM_16,
                                           SF_FORMAT_FLAC | SF_FORMAT_PCM_16,
                                           SF_FORMAT_FLAC | SF_FORMAT_PCM_24));

TEST_F(Formats, EightBitSamplesAreScaledToFullScale) {
    EXPECT_EQ(arrives(0.5, SF_FORMAT_WAV | SF_FORMAT_PCM_U8) & 0xff, 0);
    EXPECT_NEAR(arrives(0.5, SF_FORMAT_WAV | SF_FORMAT_PCM_U8), 16384, 256);
}

TEST_F(Formats, CompandedSamplesAreScaledToFullScale) {
    EXPECT_NEAR(arrives(0.5, SF_FORMAT_WAV | SF_FORMAT_ULAW), 16384, 512);
}

TEST_F(Formats, FloatsAreRoundedToNearest) {
    EXPECT_EQ(arrives(100.75 / 32768, SF_FORMAT_WAV | SF_FORMAT_FLOAT), 101);
}

TEST_F(Formats, NegativeFloatsAreRoundedToNearest) {
    EXPECT_EQ(arrives(-100.75 / 32768, SF_FORMAT_WAV | SF_FORMAT_FLOAT), -101);
}

TEST_F(Formats, TwentyFourBitSamplesAreRoundedToNearest) {
    EXPECT_EQ(arrives(100.75 / 32768, SF_FORMAT_WAV | SF_FORMAT_PCM_24), 101);
}

TEST_F(Formats, FloatsAboveFullScaleSaturate) {
    EXPECT_EQ(arrives(1.5, SF_FORMAT_WAV | SF_FORMAT_FLOAT), 32767);
}

TEST_F(Formats, FloatsBelowFullScaleSaturate) {
    EXPECT_EQ(arrives(-1.5, SF_FORMAT_WAV | SF_FORMAT_FLOAT), -32768);
}

TEST_F(Formats, FloatsThatAreNoNumbersAreSilent) {
    EXPECT_EQ(arrives(std::numeric_limits<double>::quiet_NaN(), SF_FORMAT_WAV | SF_FORMAT_FLOAT), 0);
}

TEST_F(Formats, TheOutputIsA16BitMonoWavAt16KHz) {
    writeSound(path("in.wav"), patternedSound(320));
    expectDone(process());
    EXPECT_EQ(formatOf(path("out.wav")), SF_FORMAT_WAV | SF_FORMAT_PCM_16);
    EXPECT_EQ(readSound(path("out.wav")).channels, 1);
    EXPECT_EQ(readSound(path("out.wav")).sample_rate, 16000);
}

}  // namespace
}  // namespace se_host_test
