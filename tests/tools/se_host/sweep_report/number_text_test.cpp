// Numbers as people read them.
#include "tools/se_host/sweep_report/number_text.h"

#include <gtest/gtest.h>

#include "tools/se_host/sweep_report/quantiles.h"

namespace se_host_test {
namespace {

using namespace se_host::report;

constexpr se_host::Measure kLevel{"level_db", "dB", "level", se_host::Better::kMore, false};
constexpr se_host::Measure kShare{"share", "", "share", se_host::Better::kMore, false};

TEST(NumberText, HasTheDecimalsOfItsUnit) {
    EXPECT_EQ(valueText(kLevel, 27.46), "27.5");
    EXPECT_EQ(valueText(kShare, 0.91234), "0.912");
    EXPECT_EQ(valueText(kLevel, -3), "\u22123.0");
}

TEST(NumberText, OfADifferenceHasASignAndOneDecimalMore) {
    EXPECT_EQ(differenceText(kLevel, 2.134), "+2.13");
    EXPECT_EQ(differenceText(kLevel, -2.134), "\u22122.13");
    EXPECT_EQ(differenceText(kLevel, -0.001), "0.00");
}

TEST(NumberText, HasAUnitWhereThereIsOne) {
    EXPECT_EQ(withUnit(kLevel, "1.0"), "1.0 dB");
    EXPECT_EQ(withUnit(kShare, "1.0"), "1.0");
}

TEST(NumberText, OfAProbabilityIsNotMorePreciseThanItIsMeant) {
    EXPECT_EQ(probabilityText(0.00001), "< 0.001");
    EXPECT_EQ(probabilityText(0.0314), "0.031");
    EXPECT_EQ(probabilityText(1), "1.00");
}

TEST(Quantiles, AreInterpolated) {
    const auto quantiles = quantilesOf({3, 1, 2, 4, 5});
    EXPECT_EQ(quantiles->count, 5u);
    EXPECT_EQ(quantiles->median, 3);
    EXPECT_EQ(quantiles->first, 2);
    EXPECT_DOUBLE_EQ(quantiles->low, 1.4);
    EXPECT_DOUBLE_EQ(quantiles->high, 4.6);
    EXPECT_FALSE(quantilesOf({}));
    EXPECT_EQ(quantilesOf({7})->high, 7);
}

}  // namespace
}  // namespace se_host_test
