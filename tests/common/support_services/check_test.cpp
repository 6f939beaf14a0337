// What a failed check reports.
#include <gtest/gtest.h>

#include "common/check.h"
#include "tests/common/support_services/scoped_threshold.h"
#include "tests/support/log_capture.h"

namespace quill {
namespace {

constexpr RecordSite kSite{"some/source", 77};

TEST(CheckDeathTest, PlainCheckSaysCheckFailedWithoutAColon) {
    const int mmifdirs = 2;
    EXPECT_FATAL_RECORD_ANY_LINE(QUILL_CHECK(mmifdirs == 4 || mmifdirs == 0), "check", __FILE__,
                                 "Check failed mmifdirs == 4 || mmifdirs == 0 ");
}

TEST(CheckDeathTest, ComparisonCheckSaysCheckFailedWithAColon) {
    const int samples = 320;
    const int BLOCK_SIZE = 160;
    EXPECT_FATAL_RECORD_ANY_LINE(QUILL_CHECK_EQ(BLOCK_SIZE, samples), "check", __FILE__,
                                 "Check failed: BLOCK_SIZE == samples (160 vs. 320) ");
}

TEST(CheckDeathTest, StreamsFurtherTextIntoTheSameRecord) {
    EXPECT_FATAL_RECORD_ANY_LINE(QUILL_CHECK(false) << "because " << 7, "check", __FILE__,
                                 "Check failed false because 7");
    EXPECT_FATAL_RECORD_ANY_LINE(QUILL_CHECK_EQ(1, 2) << "because " << 7, "check", __FILE__,
                                 "Check failed: 1 == 2 (1 vs. 2) because 7");
}

TEST(CheckDeathTest, EveryComparisonNamesItsOperator) {
    EXPECT_FATAL_RECORD_ANY_LINE(QUILL_CHECK_NE(1, 1), "check", __FILE__, "Check failed: 1 != 1 (1 vs. 1) ");
    EXPECT_FATAL_RECORD_ANY_LINE(QUILL_CHECK_LT(1, 1), "check", __FILE__, "Check failed: 1 < 1 (1 vs. 1) ");
    EXPECT_FATAL_RECORD_ANY_LINE(QUILL_CHECK_LE(2, 1), "check", __FILE__, "Check failed: 2 <= 1 (2 vs. 1) ");
    EXPECT_FATAL_RECORD_ANY_LINE(QUILL_CHECK_GT(1, 1), "check", __FILE__, "Check failed: 1 > 1 (1 vs. 1) ");
    EXPECT_FATAL_RECORD_ANY_LINE(QUILL_CHECK_GE(1, 2), "check", __FILE__, "Check failed: 1 >= 2 (1 vs. 2) ");
}

TEST(CheckDeathTest, CarriesTheIdentityThatItIsGiven) {
    EXPECT_FATAL_RECORD(QUILL_CHECK_AT(kSite, 1 > 2), "check", kSite, "Check failed 1 > 2 ");
    EXPECT_FATAL_RECORD(QUILL_CHECK_EQ_AT(kSite, 1, 2), "check", kSite, "Check failed: 1 == 2 (1 vs. 2) ");
    EXPECT_FATAL_RECORD(QUILL_CHECK_LE_AT(kSite, 2, 1), "check", kSite, "Check failed: 2 <= 1 (2 vs. 1) ");
    EXPECT_FATAL_RECORD(QUILL_CHECK_GT_AT(kSite, 1, 2), "check", kSite, "Check failed: 1 > 2 (1 vs. 2) ");
}

TEST(Check, ThatHoldsReportsNothing) {
    const test::ScopedLogCapture log;
    QUILL_CHECK(1 + 1 == 2);
    QUILL_CHECK_EQ(1, 1);
    QUILL_CHECK_NE(1, 2);
    QUILL_CHECK_LT(1, 2);
    QUILL_CHECK_LE(1, 1);
    QUILL_CHECK_GT(2, 1);
    QUILL_CHECK_GE(1, 1);
    EXPECT_TRUE(log.records().empty());
}

TEST(Check, FilteredOutReportsNothingAndExecutionGoesOn) {
    const test::ScopedLogCapture log;
    const test::ScopedTagThreshold none("check", 0);
    QUILL_CHECK(false) << "dropped";
    QUILL_CHECK_EQ(1, 2) << "dropped";
    EXPECT_TRUE(log.records().empty());
}

}  // namespace
}  // namespace quill
