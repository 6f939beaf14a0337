// Intelligibility. The expected values were computed by another implementation, from the paper's formulas.
#include "tools/stoi/stoi.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <stdexcept>
#include <string>

namespace stoi {
namespace {

using Signal = std::vector<float>;

constexpr int kTenKilohertz = 10000;
constexpr int kSixteenKilohertz = 16000;

// Harmonics whose strengths change a few times a second, with a pause in each second.
Signal speech(int sample_rate, int seconds = 3) {
    Signal signal;
    for (int i = 0; i < seconds * sample_rate; ++i) {
        const double t = static_cast<double>(i) / sample_rate;
        double sum = 0;
        for (int k = 1; k <= 25; ++k) {
            sum += std::sin(2 * M_PI * 150 * k * t + k * k) *
                   (1 + std::sin(2 * M_PI * (2 + 0.1 * k) * t + k)) / k;
        }
        signal.push_back(std::fmod(t, 1) > 0.7 ? 0 : static_cast<float>(sum));
    }
    return signal;
}

// Uniform within +-1 (a linear congruential generator).
Signal noise(size_t size, uint32_t seed = 1) {
    Signal signal;
    for (size_t i = 0; i < size; ++i) {
        seed = 1664525 * seed + 1013904223;
        signal.push_back(static_cast<float>(seed / 2147483648.0 - 1));
    }
    return signal;
}

Signal noisy(const Signal& signal, double amount) {
    Signal sum = noise(signal.size());
    for (size_t i = 0; i < sum.size(); ++i) {
        sum[i] = static_cast<float>(static_cast<double>(signal[i]) + amount * static_cast<double>(sum[i]));
    }
    return sum;
}

Signal clipped(Signal signal) {
    for (float& sample : signal) sample = std::clamp(sample, -0.3F, 0.3F);
    return signal;
}

// Eighths of a second, each second one silent.
Signal interrupted(Signal signal, int sample_rate) {
    const auto period = static_cast<size_t>(sample_rate / 4);
    const auto half = static_cast<size_t>(sample_rate / 8);
    for (size_t i = 0; i < signal.size(); ++i) {
        if (i % period >= half) signal[i] = 0;
    }
    return signal;
}

double atTen(const Signal& processed) {
    return intelligibility(speech(kTenKilohertz), processed, kTenKilohertz);
}

TEST(Intelligibility, HasTheValuesOfThePapersFormulas) {
    const Signal clean = speech(kTenKilohertz);
    EXPECT_NEAR(atTen(noisy(clean, 0.3)), 0.86281030, 1e-5);
    EXPECT_NEAR(atTen(noisy(clean, 1)), 0.65385330, 1e-5);
    EXPECT_NEAR(atTen(noisy(clean, 4)), 0.33153745, 1e-5);
    EXPECT_NEAR(atTen(clipped(clean)), 0.54067599, 1e-5);
    EXPECT_NEAR(atTen(interrupted(clean, kTenKilohertz)), 0.34854082, 1e-5);
    EXPECT_NEAR(atTen(noise(clean.size(), 7)), 0.16875079, 1e-5);
}

// Resamplers differ a little.
TEST(Intelligibility, HasTheseValuesAtSixteenKilohertz) {
    const Signal clean = speech(kSixteenKilohertz);
    const auto of = [&](const Signal& processed) {
        return intelligibility(clean, processed, kSixteenKilohertz);
    };
    EXPECT_NEAR(of(noisy(clean, 0.3)), 0.886596, 0.003);
    EXPECT_NEAR(of(noisy(clean, 1)), 0.700645, 0.003);
    EXPECT_NEAR(of(noisy(clean, 4)), 0.379056, 0.003);
    EXPECT_NEAR(of(clipped(clean)), 0.543290, 0.003);
}

TEST(Intelligibility, IsOneOfTheSameSignal) {
    EXPECT_NEAR(atTen(speech(kTenKilohertz)), 1, 1e-9);
    const Signal clean = speech(kSixteenKilohertz);
    EXPECT_NEAR(intelligibility(clean, clean, kSixteenKilohertz), 1, 1e-9);
}

TEST(Intelligibility, IsZeroOfSilence) {
    EXPECT_EQ(atTen(Signal(3 * kTenKilohertz)), 0);
}

TEST(Intelligibility, DoesNotDependOnTheLevel) {
    const Signal processed = noisy(speech(kTenKilohertz), 1);
    Signal quiet = processed;
    for (float& sample : quiet) sample /= 1024;
    EXPECT_NEAR(atTen(quiet), atTen(processed), 1e-6);
}

TEST(Intelligibility, FallsWithTheNoise) {
    const Signal clean = speech(kTenKilohertz);
    double last = 1;
    for (const double amount : {0.01, 0.03, 0.1, 0.3, 1.0, 3.0, 10.0}) {
        const double value = atTen(noisy(clean, amount));
        EXPECT_LT(value, last) << amount;
        last = value;
    }
}

// What is in the pauses of the clean signal is not heard by the measure.
TEST(Intelligibility, DoesNotCountPauses) {
    Signal processed = noisy(speech(kTenKilohertz), 0.3);
    const double before = atTen(processed);
    for (size_t i = 7300; i < 9700; ++i) processed[i] = 100 * processed[i];
    EXPECT_NEAR(atTen(processed), before, 1e-9);
}

std::string refusalOf(const Signal& clean, const Signal& processed) {
    try {
        intelligibility(clean, processed, kTenKilohertz);
    } catch (const std::invalid_argument& error) {
        return error.what();
    }
    return "";
}

TEST(Intelligibility, RefusesSignalsThatItCannotCompare) {
    const Signal clean = speech(kTenKilohertz);
    EXPECT_EQ(refusalOf(clean, Signal(clean.size() - 1)), "the signals have different lengths");
    const std::string too_short = "the clean signal has less than 0.4 s of sound";
    EXPECT_EQ(refusalOf(Signal(), Signal()), too_short);
    EXPECT_EQ(refusalOf(Signal(3000, 0.5F), Signal(3000, 0.5F)), too_short);
    EXPECT_EQ(refusalOf(Signal(clean.size()), clean), too_short);
}

}  // namespace
}  // namespace stoi
