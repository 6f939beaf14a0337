// The magnitude spectrum.
#include "webrtc_common/se_wrapper/dsp/simple_fft.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <random>
#include <thread>

#include "kernel_check/problem/fillers.h"
#include "kernel_check/problem/guarded_buffer.h"
#include "webrtc_common/fftpack/fftpack.h"
#include "webrtc_common/se_wrapper/dsp/fft_context.h"

namespace quill::test {
namespace {

using media::se_wrapper::g_fft_contexts;
using media::se_wrapper::simpleFFT;
using Samples = std::vector<int16_t>;
using Spectrum = std::vector<float>;

Spectrum spectrumOf(const Samples& samples) {
    Spectrum spectrum;
    simpleFFT(samples.data(), static_cast<int>(samples.size()), &spectrum);
    return spectrum;
}

Spectrum reference(const Samples& samples) {
    const size_t n = samples.size();
    std::vector<float> x(n), wsave(2 * n + 15);
    std::array<int, 20> ifac{};
    for (size_t i = 0; i < n; ++i) x[i] = static_cast<float>(samples[i] * std::ldexp(1.0, -15));
    __ogg_fdrffti(static_cast<int>(n), wsave.data(), ifac.data());
    __ogg_fdrfftf(static_cast<int>(n), x.data(), wsave.data(), ifac.data());
    Spectrum spectrum(n / 2);
    spectrum[0] = x[0];
    for (size_t k = 1; k < n / 2; ++k) {
        const float re = x[2 * k - 1], im = x[2 * k];
        const float re_squared = re * re, im_squared = im * im;
        const float power = re_squared + im_squared;
        spectrum[k] = static_cast<float>(std::sqrt(static_cast<double>(power)) / static_cast<double>(n / 2));
    }
    return spectrum;
}

Samples sine(size_t n, double bin) {
    Samples samples(n);
    for (size_t i = 0; i < n; ++i) {
        const double angle = 6.283185307179586 * bin * static_cast<double>(i) / static_cast<double>(n);
        samples[i] = static_cast<int16_t>(std::lround(32767 * std::sin(angle)));
    }
    return samples;
}

TEST(SimpleFft, GivesTheBitsOfTheReference) {
    for (size_t n = 2; n <= 300; ++n) {
        for (const Filler& filler : kFillers) {
            std::mt19937 random(static_cast<uint32_t>(n));
            Samples samples(n);
            filler.fill(samples.data(), n, random);
            EXPECT_EQ(spectrumOf(samples), reference(samples)) << n << " " << filler.name;
        }
    }
}

TEST(SimpleFft, OfAFullScaleSineAtBin8IsOneThere) {
    const Spectrum spectrum = spectrumOf(sine(256, 8));
    ASSERT_EQ(spectrum.size(), 128u);
    EXPECT_NEAR(spectrum[8], 1.0f, 1e-3f);
    EXPECT_NEAR(spectrum[9], 0.0f, 1e-3f);
}

TEST(SimpleFft, OfAConstantIsItsSumAndNothingElse) {
    const Spectrum spectrum = spectrumOf(Samples(256, 16384));
    EXPECT_EQ(spectrum[0], 128.0f);
    for (size_t k = 1; k < 128; ++k) EXPECT_EQ(spectrum[k], 0.0f) << k;
}

// Kept on purpose: the sum has a sign, the magnitudes have none.
TEST(SimpleFft, TheSumIsSigned) {
    EXPECT_EQ(spectrumOf(Samples(256, -16384))[0], -128.0f);
}

TEST(SimpleFft, OfTwoOrThreeSamplesIsTheirSum) {
    EXPECT_EQ(spectrumOf({16384, 8192}), Spectrum{0.75f});
    EXPECT_EQ(spectrumOf({16384, 8192, -32768}), Spectrum{-0.25f});
}

TEST(SimpleFft, OfFewerSamplesIsEmpty) {
    EXPECT_TRUE(spectrumOf({16384}).empty());
    EXPECT_TRUE(spectrumOf({}).empty());
}

TEST(SimpleFft, LeavesTheHighestBinOut) {
    const Spectrum spectrum = spectrumOf({32767, -32767, 32767, -32767, 32767, -32767, 32767, -32767});
    ASSERT_EQ(spectrum.size(), 4u);
    for (const float value : spectrum) EXPECT_NEAR(value, 0.0f, 1e-6f);
}

TEST(SimpleFft, ResizesTheVectorEitherWay) {
    const Samples samples = sine(64, 4);
    Spectrum longer(1000, 7.0f), shorter(3, 7.0f);
    simpleFFT(samples.data(), 64, &longer);
    simpleFFT(samples.data(), 64, &shorter);
    EXPECT_EQ(longer, spectrumOf(samples));
    EXPECT_EQ(shorter, longer);
}

TEST(SimpleFft, TakesTheLengthModulo65536) {
    const GuardedBuffer<int16_t> samples(8);
    Samples copy(samples.begin(), samples.end());
    Spectrum spectrum;
    simpleFFT(samples.data(), 65536 + 8, &spectrum);
    EXPECT_EQ(spectrum, spectrumOf(copy));
}

TEST(SimpleFft, TakesTheLargestLength) {
    const Samples samples = sine(65535, 1000.5);
    EXPECT_EQ(spectrumOf(samples), reference(samples));
}

TEST(SimpleFft, ReadsTheSamplesAndNoMore) {
    for (size_t n = 2; n <= 40; ++n) {
        const GuardedBuffer<int16_t> samples(n);
        Spectrum spectrum;
        simpleFFT(samples.data(), static_cast<int>(n), &spectrum);
        EXPECT_EQ(spectrum.size(), n / 2);
    }
}

TEST(SimpleFft, LeavesTheListOfContextsAlone) {
    const size_t before = g_fft_contexts.size();
    spectrumOf(sine(64, 4));
    EXPECT_EQ(g_fft_contexts.size(), before);
}

TEST(SimpleFft, MayRunOnTwoThreadsAtOnce) {
    const Samples samples = sine(300, 9);
    Spectrum other;
    std::thread thread([&] { other = spectrumOf(samples); });
    const Spectrum mine = spectrumOf(samples);
    thread.join();
    EXPECT_EQ(mine, other);
}

}  // namespace
}  // namespace quill::test
