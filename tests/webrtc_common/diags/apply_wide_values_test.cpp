// Edits of values beyond 32 bits and of 40-bit diagnostics.
#include "tests/webrtc_common/diags/bridge.h"

using namespace quill::test;

namespace {

// The smaller types read it as 2147483647 or 705032704.
constexpr long kBeyond32Bits = 5'000'000'000;

class ApplyWideValues : public Bridge {};

TEST_F(ApplyWideValues, CountsALongBeyond32BitsAsTheLargestInt) {
    addPublished(kInt32);
    node()->set<long>(kBeyond32Bits);
    EXPECT_EQ((Lines{"SEDiagSetInt32(0, 2147483647)"}), applied());
    EXPECT_EQ("int32 2147483647", mark());
    EXPECT_EQ("int64 5000000000", value());
    expected_assertions = {failedConversion("5000000000")};
}

TEST_F(ApplyWideValues, CountsALongBelow32BitsAsTheSmallestInt) {
    addPublished(kInt16);
    node()->set<long>(-kBeyond32Bits);
    EXPECT_EQ((Lines{"SEDiagSetInt16(0, 0)"}), applied());  // the low 16 bits of the smallest int
    EXPECT_EQ("int32 -2147483648", mark());
    expected_assertions = {failedConversion("-5000000000")};
}

TEST_F(ApplyWideValues, CountsAnEditBeyond64BitsAsTheLargestLong) {
    addPublished(kUInt32);
    node()->set<std::string>("9999999999999999999");
    EXPECT_EQ((Lines{"SEDiagSetUInt32(0, 4294967295)"}), applied());
    EXPECT_EQ("int64 9223372036854775807", mark());
    expected_assertions = {failedConversion("9999999999999999999")};
}

class Apply40Bits : public Bridge, public testing::WithParamInterface<int> {
  protected:
    std::string setter(const std::string& number) {
        return (GetParam() == kInt40 ? "SEDiagSetInt40(0, " : "SEDiagSetUInt40(0, ") + number + ")";
    }
};

TEST_P(Apply40Bits, SendsAnEditOfAValueWithin32Bits) {
    addPublished(GetParam(), 5);
    node()->set<long>(7);
    EXPECT_EQ((Lines{setter("7")}), applied());
    EXPECT_EQ("int32 7", mark());
    EXPECT_EQ(Lines{}, applied());
    publish();
    EXPECT_EQ("int64 7", value()) << "the user's own value, since the engine has it";
}

// Node and mark are both out of range and count as the same number.
TEST_P(Apply40Bits, TakesAnUneditedValueBeyond32BitsForUnchanged) {
    addPublished(GetParam(), kBeyond32Bits);
    EXPECT_EQ(Lines{}, applied());
    EXPECT_EQ("int64 5000000000", mark());
    expected_assertions = {failedConversion("5000000000"), failedConversion("5000000000")};
}

TEST_P(Apply40Bits, CannotReplaceAValueBeyond32Bits) {
    addPublished(GetParam(), kBeyond32Bits);
    node()->set<long>(7);
    EXPECT_EQ(Lines{}, applied());
    EXPECT_EQ("int64 5000000000", mark());
    expected_assertions = {failedConversion("5000000000")};
}

TEST_P(Apply40Bits, SendsTheLargestIntForAnEditBeyond32Bits) {
    addPublished(GetParam(), 5);
    node()->set<long>(kBeyond32Bits);
    EXPECT_EQ((Lines{setter("2147483647")}), applied());
    EXPECT_EQ("int32 2147483647", mark());
    expected_assertions = {failedConversion("5000000000")};
}

// Kept on purpose: the engine has moved from 5 to 2^32 + 5, which looks the same in 32 bits.
TEST_P(Apply40Bits, ComparesTheLow32BitsOfTheEnginesValueOnly) {
    const int index = addPublished(GetParam(), 5);
    node()->set<long>(7);
    engine->set_integer(index, (1LL << 32) + 5);
    EXPECT_EQ((Lines{setter("7")}), applied());
}

TEST_P(Apply40Bits, ReplacesAValueWhoseLowHalfIsTheLargestInt) {
    addPublished(GetParam(), (1LL << 32) + INT32_MAX);
    node()->set<long>(7);
    EXPECT_EQ((Lines{setter("7")}), applied());
    expected_assertions = {failedConversion("6442450943")};
}

TEST_P(Apply40Bits, SendsAnEditOfANegativeValue) {
    addPublished(GetParam(), -5);
    node()->set<long>(7);
    EXPECT_EQ((Lines{setter("7")}), applied());
}

INSTANTIATE_TEST_SUITE_P(BothSigns, Apply40Bits, testing::Values(kInt40, kUInt40));

TEST_F(ApplyWideValues, PublishesA40BitValueInFullAfterItWasMarkedAsAnInt) {
    const int index = addPublished(kInt40, 5);
    node()->set<int>(7);
    apply();
    engine->set_integer(index, kBeyond32Bits);
    publish();
    EXPECT_EQ("int64 5000000000", value());
    EXPECT_EQ("int64 5000000000", mark());
}

}  // namespace
