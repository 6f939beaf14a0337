// Convolution in blocks, and its transform.
#include "tools/scene/convolution.h"

#include <gtest/gtest.h>

#include "tools/scene/fft.h"
#include "tools/scene/random.h"

namespace se_scene {
namespace {

std::vector<float> noise(size_t frames) {
    Random random(3, Stream::kTalker);
    std::vector<float> samples(frames);
    for (float& sample : samples) sample = static_cast<float>(random.gaussian());
    return samples;
}

double directSum(const std::vector<float>& signal, const std::vector<double>& response, size_t at) {
    double sum = 0;
    for (size_t k = 0; k < response.size() && k <= at; ++k) {
        if (at - k < signal.size()) sum += response[k] * static_cast<double>(signal[at - k]);
    }
    return sum;
}

TEST(Fft, MatchesTheSumThatDefinesIt) {
    Random random(1, Stream::kTalker);
    const Fft fft(16);
    Spectrum samples(fft.size());
    for (auto& sample : samples) sample = random.complexGaussian();
    Spectrum spectrum = samples;
    fft.forward(spectrum);
    for (size_t k = 0; k < fft.size(); ++k) {
        std::complex<double> sum = 0;
        for (size_t n = 0; n < fft.size(); ++n) {
            sum += samples[n] * std::polar(1.0, -2 * M_PI * static_cast<double>(k * n) / 16);
        }
        EXPECT_LT(std::abs(sum - spectrum[k]), 1e-12);
    }
}

TEST(Fft, InverseUndoesForward) {
    const Fft fft(64);
    Spectrum samples(fft.size());
    for (size_t i = 0; i < samples.size(); ++i) samples[i] = {static_cast<double>(i), 1};
    Spectrum transformed = samples;
    fft.forward(transformed);
    fft.inverse(transformed);
    for (size_t i = 0; i < samples.size(); ++i) EXPECT_LT(std::abs(samples[i] - transformed[i]), 1e-11);
}

TEST(Convolution, MatchesTheDirectSumAcrossItsBlocks) {
    const std::vector<float> signal = noise(1000);
    std::vector<double> response(37);
    for (size_t k = 0; k < response.size(); ++k) response[k] = 1.0 / static_cast<double>(k + 1);
    const auto rows = convolve(signal, {0, {response}});
    ASSERT_EQ(rows[0].size(), signal.size());
    for (size_t i = 0; i < signal.size(); ++i) {
        EXPECT_NEAR(rows[0][i], directSum(signal, response, i), 1e-5) << "sample " << i;
    }
}

TEST(Convolution, BeginsAtTheMomentOfEmission) {
    const std::vector<float> signal = noise(100);
    const auto rows = convolve(signal, {5, {{0, 0, 0, 0, 0, 1, 0}}});
    for (size_t i = 0; i < signal.size(); ++i) EXPECT_NEAR(rows[0][i], signal[i], 1e-6);
}

TEST(Convolution, UsesTheResponseOfEachMicrophone) {
    const std::vector<float> signal = noise(50);
    const auto rows = convolve(signal, {0, {{1, 0}, {0, 2}}});
    for (size_t i = 1; i < signal.size(); ++i) {
        EXPECT_NEAR(rows[0][i], signal[i], 1e-6);
        EXPECT_NEAR(rows[1][i], 2 * signal[i - 1], 1e-6);
    }
}

}  // namespace
}  // namespace se_scene
