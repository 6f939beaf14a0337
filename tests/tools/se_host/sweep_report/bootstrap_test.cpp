// The confidence interval of a mean.
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "tools/se_host/sweep_report/bootstrap.h"

namespace se_host_test {
namespace {

using se_host::report::bootstrapOfMean;
using se_host::report::Interval;

std::vector<double> normal(size_t count, double mean, unsigned seed) {
    std::mt19937 random(seed);
    std::normal_distribution<double> distribution(mean, 1);
    std::vector<double> values;
    for (size_t i = 0; i < count; ++i) values.push_back(distribution(random));
    return values;
}

TEST(Bootstrap, OfOneValueIsThatValue) {
    const Interval interval = bootstrapOfMean({2.5});
    EXPECT_EQ(interval.low, 2.5);
    EXPECT_EQ(interval.high, 2.5);
}

TEST(Bootstrap, OfTwoValuesReachesFromOneToTheOther) {
    const Interval interval = bootstrapOfMean({0, 1});
    EXPECT_EQ(interval.low, 0);
    EXPECT_EQ(interval.high, 1);
}

// The width of a normal sample's interval is known: 1.96 standard errors on each side.
TEST(Bootstrap, IsAsWideAsTheoryHasItForManyValues) {
    const Interval interval = bootstrapOfMean(normal(1000, 3, 1));
    EXPECT_NEAR(interval.high - interval.low, 2 * 1.96 / std::sqrt(1000), 0.008);
}

TEST(Bootstrap, CoversTheTrueMeanInNineteenOfTwentySamples) {
    size_t covered = 0;
    constexpr unsigned kSamples = 200;
    for (unsigned seed = 1; seed <= kSamples; ++seed) {
        const Interval interval = bootstrapOfMean(normal(30, 3, seed));
        covered += interval.low <= 3 && interval.high >= 3 ? 1U : 0U;
    }
    EXPECT_GE(covered, kSamples * 89 / 100);
    EXPECT_LE(covered, kSamples * 99 / 100);
}

TEST(Bootstrap, OfTheNegativeIsTheNegative) {
    std::vector<double> values = normal(40, 0.3, 5);
    const Interval interval = bootstrapOfMean(values);
    for (double& value : values) value = -value;
    const Interval negative = bootstrapOfMean(values);
    EXPECT_NEAR(negative.low, -interval.high, 1e-12);
    EXPECT_NEAR(negative.high, -interval.low, 1e-12);
}

// Whole numbers and a power of two of them: no rounding can differ. The bits are the same on every machine.
TEST(Bootstrap, HasTheseBits) {
    const Interval interval = bootstrapOfMean({1, 5, -2, 8, 0, 3, 3, -7});
    EXPECT_EQ(interval.low, -1.75);
    EXPECT_EQ(interval.high, 4.125);
}

TEST(Bootstrap, TellsWhetherItExcludesZero) {
    EXPECT_TRUE(bootstrapOfMean(normal(50, 2, 1)).excludesZero());
    EXPECT_TRUE(bootstrapOfMean(normal(50, -2, 1)).excludesZero());
    EXPECT_FALSE(bootstrapOfMean(normal(50, 0, 1)).excludesZero());
}

}  // namespace
}  // namespace se_host_test
