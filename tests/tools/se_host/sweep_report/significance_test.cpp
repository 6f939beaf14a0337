// Student's paired test, and Holm's correction.
#include "tools/se_host/sweep_report/significance.h"

#include <gtest/gtest.h>

namespace se_host_test {
namespace {

using se_host::report::correctedByHolm;
using se_host::report::probabilityByChance;

TEST(PairedTest, HasTheTabulatedProbability) {
    // Mean 3, standard error sqrt(0.5): t = 4.243 with 4 degrees of freedom.
    EXPECT_NEAR(probabilityByChance({1, 2, 3, 4, 5}), 0.01324, 1e-5);
    EXPECT_NEAR(probabilityByChance({-1, -2, -3, -4, -5}), 0.01324, 1e-5);
}

TEST(PairedTest, OfNoDifferenceIsCertainlyChance) {
    EXPECT_EQ(probabilityByChance({-1, 1}), 1);
    EXPECT_EQ(probabilityByChance({0, 0, 0}), 1);
    EXPECT_EQ(probabilityByChance({5}), 1);
}

TEST(PairedTest, OfOneConstantDifferenceIsCertainlyNotChance) {
    EXPECT_EQ(probabilityByChance({2, 2, 2}), 0);
}

TEST(HolmCorrection, MultipliesFromTheSmallestOn) {
    EXPECT_EQ(correctedByHolm({0.01, 0.04, 0.03}), (std::vector<double>{0.03, 0.06, 0.06}));
    EXPECT_EQ(correctedByHolm({0.5, 0.9}), (std::vector<double>{1, 1}));
    EXPECT_EQ(correctedByHolm({0.02}), (std::vector<double>{0.02}));
    EXPECT_TRUE(correctedByHolm({}).empty());
}

}  // namespace
}  // namespace se_host_test
