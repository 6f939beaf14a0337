// The checks work: deliberately broken kernels are caught, the references are accepted.
#include <gtest/gtest.h>

#include <stdexcept>

#include "kernel_check/check.h"
#include "kernel_check/self_test/broken_kernels.h"

namespace quill::test {
namespace {

class KernelCheck : public ::testing::Test {
  protected:
    // The check's message about the broken kernel of this name.
    std::string found(const std::string& broken, const Numbers& given = {}) const {
        for (const KernelFunction& function : functions_) {
            for (const FunctionVariant& variant : function.variants) {
                if (variant.name != broken || &variant == &function.reference()) continue;
                if (!given.empty()) return fault(function, variant, 77, given);
                return firstFault(function, variant, 1, 500).text;
            }
        }
        throw std::invalid_argument(broken);
    }
    const std::vector<KernelFunction> functions_ = brokenFunctions();
};

TEST_F(KernelCheck, AcceptsTheReferences) {
    for (const KernelFunction& function : functions_) {
        EXPECT_EQ(firstFault(function, function.reference(), 1, 500).text, "") << function.name;
    }
}

TEST_F(KernelCheck, CatchesAWrongShift) {
    EXPECT_NE(found("wrong shift"), "");
}

TEST_F(KernelCheck, CatchesALogicalShift) {
    EXPECT_NE(found("logical shift"), "");
}

TEST_F(KernelCheck, CatchesMissingSaturation) {
    EXPECT_NE(found("no saturation"), "");
}

TEST_F(KernelCheck, CatchesMissingRounding) {
    EXPECT_NE(found("no rounding"), "");
}

TEST_F(KernelCheck, CatchesSwappedLanes) {
    EXPECT_NE(found("swapped lanes"), "");
}

TEST_F(KernelCheck, CatchesSumsThatDoNotWrap) {
    EXPECT_NE(found("sums that do not wrap"), "");
}

TEST_F(KernelCheck, CatchesOneWriteTooFew) {
    EXPECT_NE(found("one write too few"), "");
}

TEST_F(KernelCheck, CatchesOneWriteTooManyInTheSpaceAfter) {
    const std::string text = found("one write too many", {{"num_out", 8}, {"out.at_end", 0}});
    EXPECT_EQ(text.find("out[8] of 8 differs\n"), 0u) << text;
}

TEST_F(KernelCheck, CatchesOneWriteTooManyAtTheGuardPage) {
    const std::string text =
        found("one write too many", {{"num_out", 8}, {"out.at_end", 1}, {"out.offset", 0}});
    EXPECT_EQ(text.find("writes out[8] of 8\n"), 0u) << text;
}

TEST_F(KernelCheck, CatchesOneReadTooMany) {
    const std::string text = found(
        "one read too many", {{"num_out", 8}, {"num_taps", 8}, {"signal.at_end", 1}, {"signal.offset", 0}});
    EXPECT_EQ(text.find("reads signal[16] of 16\n"), 0u) << text;
}

TEST_F(KernelCheck, ShowsTheFirstBadOutputBothRowsTheNumbersAndTheSeed) {
    const std::string text = found("swapped lanes", {{"num_out", 8}, {"signal.filler", 7}});
    EXPECT_EQ(text.find("out[2] of 8 differs\n  from [-2] is        "), 0u) << text;
    EXPECT_NE(text.find("\n  from [-2] should be "), std::string::npos) << text;
    EXPECT_NE(text.find("num_out 8, num_taps "), std::string::npos) << text;
    EXPECT_NE(text.find("; seed 77"), std::string::npos) << text;
}

TEST_F(KernelCheck, FindsTheSameErrorAgain) {
    EXPECT_EQ(found("one read too many"), found("one read too many"));
}

}  // namespace
}  // namespace quill::test
