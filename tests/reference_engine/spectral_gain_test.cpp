// How far the gain of a bin falls where it holds noise, echo, or both, and no speech.
#include "reference_engine/audio/spectral_gain.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <iterator>

using namespace reference_engine;

namespace {

constexpr int kFrames = 100;
constexpr float kNoise = 1e4f;
constexpr int kMiddle = kSpectralBins / 2;

class SpectralGainFloor : public testing::Test {
  protected:
    // Noise of this power in each bin, long enough to be known.
    void hearNoise(float power) {
        Bins observed;
        std::fill(std::begin(observed), std::end(observed), power);
        Spectrum spectrum = {};
        spectrum.scale = 1;
        spectrum.values[0] = 1;  // not silent
        for (int i = 0; i < 10 * kFrames; ++i) noise_.update(spectrum, observed, 1);
    }

    // Of a bin in the middle, in decibels of power, after frames of this power in each bin, of which `echo` is echo.
    double gainDb(float power, float echo) {
        Bins powers, echoes;
        std::fill(std::begin(powers), std::end(powers), power);
        std::fill(std::begin(echoes), std::end(echoes), echo);
        for (int i = 0; i < kFrames; ++i) gain_.update(powers, noise_, echoes, settings_);
        return 20 * std::log10(gain_.gain()[kMiddle]);
    }

  private:
    using Bins = float[kSpectralBins];

    NoiseFloor noise_;
    SpectralGain gain_;
    Settings settings_;
};

}  // namespace

TEST_F(SpectralGainFloor, OfNoiseIsMinus14Decibels) {
    hearNoise(kNoise);
    EXPECT_NEAR(gainDb(kNoise, 0), -14, 0.5);
}

TEST_F(SpectralGainFloor, OfEchoIsMinus40Decibels) {
    EXPECT_NEAR(gainDb(kNoise, kNoise), -40, 0.5);
}

// Nothing is gained by lowering the echo further than the noise that stays, and a hole would be heard.
TEST_F(SpectralGainFloor, OfEchoAboveNoiseLeavesWhatNoiseAloneWould) {
    hearNoise(kNoise);
    EXPECT_NEAR(gainDb(11 * kNoise, 10 * kNoise), -14 - 10 * std::log10(11), 0.5);
}
