// Which records are kept.
#include <gtest/gtest.h>

#include "common/logging.h"
#include "tests/common/support_services/scoped_threshold.h"

namespace quill {
namespace {

using test::ScopedTagThreshold;
using test::ScopedThreshold;

TEST(LogThreshold, KeepsLevelsOneToFourByDefault) {
    EXPECT_TRUE(isLoggerEnabled(1, "check"));
    EXPECT_TRUE(isLoggerEnabled(2, "se_wrapper"));
    EXPECT_TRUE(isLoggerEnabled(4, "se_wrapper"));
    EXPECT_FALSE(isLoggerEnabled(5, "se_wrapper"));
}

TEST(LogThreshold, AppliesToEveryTagWithoutOneOfItsOwn) {
    const ScopedThreshold every(5);
    EXPECT_TRUE(isLoggerEnabled(5, "se_wrapper"));
    EXPECT_TRUE(isLoggerEnabled(5, "never seen"));
    EXPECT_FALSE(isLoggerEnabled(6, "se_wrapper"));
}

TEST(LogThreshold, OfOneTagRaisesThatTagOnly) {
    const ScopedTagThreshold own("own", 5);
    EXPECT_TRUE(isLoggerEnabled(5, "own"));
    EXPECT_FALSE(isLoggerEnabled(5, "other"));
}

TEST(LogThreshold, OfOneTagLowersThatTagOnly) {
    const ScopedTagThreshold own("own", 2);
    EXPECT_TRUE(isLoggerEnabled(2, "own"));
    EXPECT_FALSE(isLoggerEnabled(4, "own"));
    EXPECT_TRUE(isLoggerEnabled(4, "other"));
}

TEST(LogThreshold, OfEveryTagLeavesATagsOwnAlone) {
    const ScopedTagThreshold own("own", 5);
    const ScopedThreshold every(2);
    EXPECT_TRUE(isLoggerEnabled(5, "own"));
    EXPECT_FALSE(isLoggerEnabled(4, "other"));
}

TEST(LogThreshold, ZeroDropsEverythingFatalRecordsIncluded) {
    const ScopedThreshold every(0);
    EXPECT_FALSE(isLoggerEnabled(1, "check"));
    EXPECT_FALSE(isLoggerEnabled(2, "se_wrapper"));
}

TEST(LogThreshold, ZeroForOneTagDropsAllOfItsRecords) {
    const ScopedTagThreshold own("own", 0);
    EXPECT_FALSE(isLoggerEnabled(1, "own"));
    EXPECT_TRUE(isLoggerEnabled(1, "other"));
}

TEST(LogThreshold, LevelsBelowOneAreNeverKept) {
    const ScopedThreshold every(5);
    EXPECT_FALSE(isLoggerEnabled(0, "se_wrapper"));
    EXPECT_FALSE(isLoggerEnabled(-1, "se_wrapper"));
}

}  // namespace
}  // namespace quill
