// A text that does not convert to the type is a soft assertion.
#include <gtest/gtest.h>

#include "tests/common/property_value/typed_value.h"
#include "tests/support/log_capture.h"

namespace quill {
namespace {

template <class T>
class FailedConversion : public testing::Test {};
using NumberTypes = testing::Types<float, long, bool, int>;
TYPED_TEST_SUITE(FailedConversion, NumberTypes, );  // no names for the types

TYPED_TEST(FailedConversion, IsReportedWithTheTextAndTheHelpersSignature) {
    const test::ScopedAssertionCapture assertions;
    TypeParam value{};
    ValueTraitsHelper<TypeParam>::fromString(&value, "abc");
    ASSERT_EQ(assertions.records().size(), 1u);
    const AssertionRecord record = assertions.records()[0];
    EXPECT_STREQ(record.file, "common/property_value");
    EXPECT_EQ(record.line, 39);
    EXPECT_EQ(record.text, "Assertion failed: Failed conversion from abc.");
    EXPECT_EQ(std::string(record.function).find("static void quill::ValueTraitsHelper<"), 0u)
        << record.function;
    EXPECT_NE(std::string(record.function).find(">::fromString(void"), std::string::npos) << record.function;
}

TYPED_TEST(FailedConversion, OfTheOperatorsIsTheSame) {
    const test::ScopedAssertionCapture assertions;
    TypeParam value{};
    property_internal::PropertyValueOperatorsT<TypeParam>::staticCopy()->fromString(&value, "");
    EXPECT_EQ(assertions.texts(), std::vector<std::string>{"Assertion failed: Failed conversion from ."});
}

TYPED_TEST(FailedConversion, DoesNotHappenToAGoodText) {
    const test::ScopedAssertionCapture assertions;
    TypeParam value{};
    ValueTraitsHelper<TypeParam>::fromString(&value, "1");
    EXPECT_EQ(value, TypeParam(1));
    EXPECT_TRUE(assertions.records().empty());
}

TEST(FailedConversionOfStrings, CannotHappen) {
    const test::ScopedAssertionCapture assertions;
    std::string value = "before";
    property_internal::PropertyValueOperatorsT<std::string>::staticCopy()->fromString(&value, "abc");
    EXPECT_EQ(value, "abc");
    EXPECT_TRUE(assertions.records().empty());
}

}  // namespace
}  // namespace quill
