// The voice has the properties of speech that an engine detects.
#include "tools/scene/voice.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "tools/scene/fft.h"
#include "tools/scene/measure.h"

namespace se_scene {
namespace {

Row speak(const Voice& voice) {
    Random random(1, Stream::kTalker);
    return synthesiseSpeech(voice, 20 * kSampleRate, random);
}

double octaveLevel(const Row& row, double center_hz) {
    const Fft fft(powerOfTwoFrom(row.size()));
    Spectrum spectrum(row.begin(), row.end());
    spectrum.resize(fft.size());
    fft.forward(spectrum);
    const double bins_per_hertz = static_cast<double>(fft.size()) / kSampleRate;
    const auto end = static_cast<size_t>(center_hz * M_SQRT2 * bins_per_hertz);
    double power = 0;
    for (auto k = static_cast<size_t>(center_hz / M_SQRT2 * bins_per_hertz); k < end; ++k) {
        power += std::norm(spectrum[k]);
    }
    return decibelsOfPower(power);
}

// The lag of the largest autocorrelation of loud passages, for pitches from 70 to 350 Hz.
double medianPitch(const Row& row) {
    std::vector<double> pitches;
    for (double start = 0; start < 20; start += 0.05) {
        const Row piece = excerpt(row, start, start + 0.05);
        if (levelDbfs(piece) < activeLevelDbfs(row)) continue;
        double best = 0;
        size_t best_lag = 1;
        for (size_t lag = kSampleRate / 350; lag <= kSampleRate / 70; ++lag) {
            double sum = 0;
            for (size_t i = lag; i < piece.size(); ++i) sum += static_cast<double>(piece[i] * piece[i - lag]);
            if (sum > best) {
                best = sum;
                best_lag = lag;
            }
        }
        pitches.push_back(static_cast<double>(kSampleRate) / static_cast<double>(best_lag));
    }
    std::sort(pitches.begin(), pitches.end());
    return pitches[pitches.size() / 2];
}

TEST(Voice, TheTwoVoicesHaveTheirPitches) {
    EXPECT_NEAR(medianPitch(speak(kTalkerVoice)), 120, 15);
    EXPECT_NEAR(medianPitch(speak(kFarEndVoice)), 200, 25);
}

TEST(Voice, IsLoudestAroundFiveHundredHertzAndFallsOff) {
    for (const Voice* voice : {&kTalkerVoice, &kFarEndVoice}) {
        const Row speech = speak(*voice);
        const double reference = octaveLevel(speech, 500);
        EXPECT_LT(octaveLevel(speech, 63), reference - 15);
        EXPECT_LT(octaveLevel(speech, 2000), reference - 5);
        EXPECT_LT(octaveLevel(speech, 4000), reference - 8);
        EXPECT_GT(octaveLevel(speech, 2000), reference - 25);
        EXPECT_GT(octaveLevel(speech, 4000), reference - 25);
    }
}

TEST(Voice, PausesBetweenPhrases) {
    const Row speech = speak(kTalkerVoice);
    const double threshold = activeLevelDbfs(speech) - 40;
    int quiet = 0;
    int pauses = 0;
    for (double start = 0; start < 20; start += 0.05) {
        quiet = levelDbfs(excerpt(speech, start, start + 0.05)) < threshold ? quiet + 1 : 0;
        if (quiet == 4) ++pauses;  // 200 ms
    }
    EXPECT_GE(pauses, 5);
    EXPECT_LE(pauses, 20);
}

TEST(Voice, SpeaksMostOfTheTime) {
    const Row speech = speak(kTalkerVoice);
    const double share = std::pow(10, (levelDbfs(speech) - activeLevelDbfs(speech)) / 10);
    EXPECT_GT(share, 0.5);
    EXPECT_LT(share, 0.95);
}

TEST(Voice, HasNoExtremePeaks) {
    const Row speech = speak(kTalkerVoice);
    float peak = 0;
    for (float sample : speech) peak = std::max(peak, std::abs(sample));
    const double crest = 20 * std::log10(static_cast<double>(peak)) - activeLevelDbfs(speech);
    EXPECT_GT(crest, 10);
    EXPECT_LT(crest, 22);
}

}  // namespace
}  // namespace se_scene
