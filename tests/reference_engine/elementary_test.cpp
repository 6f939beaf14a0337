// Sines, logarithms and powers: right, and the same bits from every compiler on every processor.
#include "reference_engine/routines/elementary.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <random>

namespace reference_engine {
namespace {

constexpr double kTolerance = 0x1p-51;

void expectNear(double value, double expected, double x) {
    ASSERT_NEAR(value, expected, kTolerance * std::max(1.0, std::abs(expected))) << x;
}

TEST(Elementary, SinesAreRight) {
    std::mt19937_64 random(1);
    for (const double reach : {1.0, 10.0, 1000.0, 1048576.0}) {
        std::uniform_real_distribution<double> any(-reach, reach);
        for (int i = 0; i < 100'000; ++i) {
            const double x = any(random);
            expectNear(sine(x), std::sin(x), x);
            expectNear(cosine(x), std::cos(x), x);
        }
    }
    for (int k = -64; k <= 64; ++k) {
        expectNear(sine(k * M_PI / 8), std::sin(k * M_PI / 8), k);
        expectNear(cosine(k * M_PI / 8), std::cos(k * M_PI / 8), k);
    }
    EXPECT_EQ(sine(0), 0);
    EXPECT_EQ(cosine(0), 1);
}

TEST(Elementary, LogarithmsAndPowersAreRight) {
    std::mt19937_64 random(2);
    std::uniform_real_distribution<double> exponent(-300, 300);
    for (int i = 0; i < 100'000; ++i) {
        const double x = exponent(random);
        expectNear(logarithm2(std::exp2(x)), std::log2(std::exp2(x)), x);
        ASSERT_NEAR(powerOf2(x) / std::exp2(x), 1, 2 * kTolerance) << x;
    }
    for (int k = -300; k <= 300; ++k) {
        EXPECT_EQ(powerOf2(k), std::ldexp(1, k));
        EXPECT_EQ(logarithm2(std::ldexp(1, k)), k);
    }
    expectNear(decibels(100), 20, 100);
    expectNear(decibels(0.5), 10 * std::log10(0.5), 0.5);
    expectNear(amplitudeOf(-20), 0.1, -20);
}

// FNV-1a over the bits of results whose last bits the C library leaves to the processor.
TEST(Elementary, TheBitsAreTheSameEverywhere) {
    uint64_t hash = 14695981039346656037U;
    const auto add = [&](double value) {
        uint64_t bits;
        std::memcpy(&bits, &value, sizeof(bits));
        hash = (hash ^ bits) * 1099511628211U;
    };
    for (int i = 1; i <= 20'000; ++i) {
        const double x = i * 0.0137;
        add(sine(x));
        add(cosine(-x));
        add(logarithm2(x));
        add(powerOf2(x - 100));
        add(decibels(x));
        add(amplitudeOf(-x));
    }
    EXPECT_EQ(hash, 17791702518444666221U);
}

}  // namespace
}  // namespace reference_engine
