// Lengths, rates and channel counts: the output has the duration of the input.
#include <algorithm>
#include <cmath>

#include "tests/tools/se_host/host_test.h"

namespace se_host_test {
namespace {

class Length : public HostTest {
  protected:
    std::vector<int16_t> bypassed(const Sound& sound) {
        writeSound(path("in.wav"), sound);
        expectDone(process({"--bypass"}));
        const Sound output = readSound(path("out.wav"));
        EXPECT_EQ(output.sample_rate, 16000);
        return output.samples;
    }
};

// A 1 kHz tone of half full scale in all channels.
Sound tone(size_t frames, int sample_rate) {
    Sound sound{sample_rate, 8, {}};
    for (size_t frame = 0; frame < frames; ++frame) {
        const double phase = 2 * std::acos(-1.0) * 1000 * static_cast<double>(frame) / sample_rate;
        sound.samples.insert(sound.samples.end(), 8,
                             static_cast<int16_t>(std::lrint(16384 * std::sin(phase))));
    }
    return sound;
}

TEST_F(Length, BypassIsChannel7SampleForSample) {
    const Sound sound = patternedSound(1600);
    EXPECT_EQ(bypassed(sound), channelOf(sound, 7));
}

TEST_F(Length, APartialLastBlockComesOutInFull) {
    const Sound sound = patternedSound(1601);
    EXPECT_EQ(bypassed(sound), channelOf(sound, 7));
}

TEST_F(Length, OneFrameIsEnough) {
    const Sound sound = patternedSound(1);
    EXPECT_EQ(bypassed(sound), channelOf(sound, 7));
}

TEST_F(Length, MoreThanEightChannelsAreAccepted) {
    const Sound sound = patternedSound(320, 11);
    EXPECT_EQ(bypassed(sound), channelOf(sound, 7));
}

TEST_F(Length, ThroughTheEngineAPartialLastBlockIsCutToTheInput) {
    writeSound(path("in.wav"), patternedSound(1601));
    expectDone(process());
    EXPECT_EQ(readSound(path("out.wav")).frames(), 1601u);
}

TEST_F(Length, ARecordingAt48KHzIsResampledInPlaceAndInLevel) {
    const std::vector<int16_t> output = bypassed(tone(48000, 48000));
    const std::vector<int16_t> expected = channelOf(tone(16000, 16000), 7);
    ASSERT_EQ(output.size(), expected.size());
    int worst = 0;
    for (size_t i = 500; i < output.size() - 500; ++i)
        worst = std::max(worst, std::abs(output[i] - expected[i]));
    EXPECT_LE(worst, 2);
}

TEST_F(Length, AnyNumberOfChannelsIsResampled) {
    EXPECT_EQ(bypassed(patternedSound(480, 200, 48000)).size(), 160u);
}

TEST_F(Length, ARecordingAt44100HzKeepsItsDuration) {
    EXPECT_EQ(bypassed(tone(44100, 44100)).size(), 16000u);
}

TEST_F(Length, ARecordingAt8KHzKeepsItsDuration) {
    EXPECT_EQ(bypassed(tone(1001, 8000)).size(), 2002u);
}

TEST_F(Length, ResamplingIsReported) {
    writeSound(path("in.wav"), tone(4800, 48000));
    const HostRun result = process();
    expectDone(result);
    EXPECT_NE(result.out.find("resampled from 48000 to 16000 Hz"), std::string::npos) << result.out;
}

}  // namespace
}  // namespace se_host_test
