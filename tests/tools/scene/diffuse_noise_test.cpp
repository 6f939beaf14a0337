// Diffuse noise: coherence between microphones, level and colour.
#include <gtest/gtest.h>

#include <cmath>

#include "tests/tools/scene/test_scenes.h"
#include "tools/scene/fft.h"
#include "tools/scene/geometry.h"

namespace se_scene {
namespace {

constexpr size_t kFrame = 512;
constexpr double kSeconds = 10;

Spectrum windowed(const Row& row, size_t start, const Fft& fft) {
    Spectrum spectrum(kFrame);
    for (size_t i = 0; i < kFrame; ++i) {
        const double window = 0.5 - 0.5 * std::cos(2 * M_PI * static_cast<double>(i) / kFrame);
        spectrum[i] = window * static_cast<double>(row[start + i]);
    }
    fft.forward(spectrum);
    return spectrum;
}

// Real part of the coherence of two rows at one bin, averaged over the row (Welch).
std::vector<double> coherenceOf(const Row& a, const Row& b) {
    const Fft fft(kFrame);
    Spectrum cross(kFrame);
    std::vector<double> power_a(kFrame), power_b(kFrame);
    for (size_t start = 0; start + kFrame <= a.size(); start += kFrame / 2) {
        const Spectrum x = windowed(a, start, fft);
        const Spectrum y = windowed(b, start, fft);
        for (size_t k = 0; k < kFrame; ++k) {
            cross[k] += x[k] * std::conj(y[k]);
            power_a[k] += std::norm(x[k]);
            power_b[k] += std::norm(y[k]);
        }
    }
    std::vector<double> coherence(kFrame / 2);
    for (size_t k = 0; k < coherence.size(); ++k) {
        coherence[k] = cross[k].real() / std::sqrt(power_a[k] * power_b[k]);
    }
    return coherence;
}

Scene diffuseScene(NoiseColour colour) {
    SceneOptions options = silentScene(kSeconds);
    options.diffuse_noise_dbfs = -40;
    options.diffuse_noise_colour = colour;
    return makeScene(options);
}

void expectCoherenceOfDistance(const Row& a, const Row& b, double distance_m) {
    const std::vector<double> coherence = coherenceOf(a, b);
    for (size_t k = 2; k < coherence.size(); ++k) {
        const double hertz = static_cast<double>(k) * kSampleRate / kFrame;
        const double kd = 2 * M_PI * hertz / kSpeedOfSound * distance_m;
        EXPECT_NEAR(coherence[k], std::sin(kd) / kd, 0.15) << hertz << " Hz";
    }
}

double levelBetween(const Row& row, double low_hz, double high_hz) {
    const Fft fft(powerOfTwoFrom(row.size()));
    Spectrum spectrum(row.begin(), row.end());
    spectrum.resize(fft.size());
    fft.forward(spectrum);
    const double bin_hz = static_cast<double>(kSampleRate) / static_cast<double>(fft.size());
    double power = 0;
    for (size_t k = 0; k < fft.size() / 2; ++k) {
        const double hertz = static_cast<double>(k) * bin_hz;
        if (hertz >= low_hz && hertz < high_hz) power += std::norm(spectrum[k]);
    }
    return decibelsOfPower(power);
}

TEST(DiffuseNoise, HasIsotropicCoherenceBetweenCentreAndCircle) {
    const Scene scene = diffuseScene(NoiseColour::kWhite);
    expectCoherenceOfDistance(scene.noise[0], scene.noise[2], 0.0425);
}

TEST(DiffuseNoise, HasIsotropicCoherenceAcrossTheCircle) {
    const Scene scene = diffuseScene(NoiseColour::kWhite);
    expectCoherenceOfDistance(scene.noise[1], scene.noise[4], 0.085);
}

TEST(DiffuseNoise, IsAsLoudAtEachMicrophone) {
    const Scene scene = diffuseScene(NoiseColour::kWhite);
    for (const Row& row : scene.noise) EXPECT_NEAR(levelDbfs(row), -40, 0.5);
}

TEST(DiffuseNoise, WhiteHasTwiceThePowerInEachHigherOctave) {
    const Row noise = diffuseScene(NoiseColour::kWhite).noise[0];
    const double low = levelBetween(noise, 500, 1000);
    const double high = levelBetween(noise, 4000, 8000);
    EXPECT_NEAR(high - low, 9.03, 0.5);
}

TEST(DiffuseNoise, PinkHasTheSamePowerInEachOctave) {
    const Row noise = diffuseScene(NoiseColour::kPink).noise[0];
    const double reference = levelBetween(noise, 4000, 8000);
    for (double low : {125, 250, 500, 1000, 2000}) {
        EXPECT_NEAR(levelBetween(noise, low, 2 * low), reference, 1.0) << low << " Hz";
    }
}

TEST(DiffuseNoise, StaysAsLoudFromBeginningToEnd) {
    const Row noise = diffuseScene(NoiseColour::kWhite).noise[0];
    for (double start = 0; start < kSeconds; start += 0.25) {
        EXPECT_NEAR(levelDbfs(excerpt(noise, start, start + 0.25)), -40, 0.8) << start << " s";
    }
}

TEST(SensorNoise, IsIndependentAtEachMicrophone) {
    SceneOptions options = silentScene(5);
    options.sensor_noise_dbfs = -40;
    const Scene scene = makeScene(options);
    for (size_t a = 0; a < kMicrophones; ++a) {
        for (size_t b = a + 1; b < kMicrophones; ++b) {
            double sum = 0;
            for (size_t i = 0; i < scene.frames; ++i) {
                sum += static_cast<double>(scene.noise[a][i]) * static_cast<double>(scene.noise[b][i]);
            }
            const double correlation = sum / static_cast<double>(scene.frames) / powerOf(scene.noise[a]);
            EXPECT_LT(std::abs(correlation), 0.02) << a << " and " << b;
        }
    }
}

}  // namespace
}  // namespace se_scene
