// Means with confidence intervals, and quantiles.
#include "bench/engine_vs_peer/statistics.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace engine_vs_peer;

// Student's t for four degrees of freedom and 95 % is 2.776; the deviation of 1 to 5 is the root of 2.5.
TEST(Estimate, OfAFewValuesHasStudentsInterval) {
    const Estimate of_five = estimate({1, 2, 3, 4, 5});
    EXPECT_DOUBLE_EQ(of_five.mean, 3);
    EXPECT_NEAR(of_five.margin, 2.776 * std::sqrt(2.5 / 5), 1e-3);
}

TEST(Estimate, OfOneValueHasNoInterval) {
    EXPECT_EQ(estimate({7}).mean, 7);
    EXPECT_TRUE(std::isnan(estimate({7}).margin));
}

TEST(Quantile, IsTheSmallestValueThatTheShareDoesNotExceed) {
    EXPECT_EQ(quantile({4, 1, 3, 2}, 0.5), 2);
    EXPECT_EQ(quantile({4, 1, 3, 2}, 0.51), 3);
    EXPECT_EQ(quantile({4, 1, 3, 2}, 1), 4);
    EXPECT_EQ(quantile({4, 1, 3, 2}, 0), 1);
}
