// Soft assertions whose records are filtered out.
#include <gtest/gtest.h>

#include "common/assertion.h"
#include "tests/common/support_services/scoped_threshold.h"
#include "tests/support/log_capture.h"

namespace quill {
namespace {

TEST(Assertion, DefaultMakesNoRecordWhenItsTagIsFilteredOut) {
    const test::ScopedLogCapture log;
    const test::ScopedTagThreshold silent("assert", 0);
    EXPECT_FALSE(handleAssertion("file", 12, "function", "Assertion failed: x"));
    EXPECT_TRUE(log.records().empty());
}

}  // namespace
}  // namespace quill
