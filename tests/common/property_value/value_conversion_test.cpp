// Reading a value as another type goes through its text.
#include <gtest/gtest.h>

#include "tests/common/property_value/typed_value.h"
#include "tests/support/log_capture.h"

namespace quill {
namespace {

using test::textValue;
using test::valueOf;

template <class T>
T as(const PropertyValue& value, T before = T{}) {
    EXPECT_TRUE(value.get(before));
    return before;
}

TEST(ValueConversion, OfAnEmptyValueFailsAndLeavesTheTargetAlone) {
    int number = 5;
    std::string text = "before";
    EXPECT_FALSE(PropertyValue().get(number));
    EXPECT_FALSE(PropertyValue().get(text));
    EXPECT_EQ(number, 5);
    EXPECT_EQ(text, "before");
}

TEST(ValueConversion, ReadsAnIntAsAnyType) {
    EXPECT_EQ(as<long>(valueOf(-7)), -7l);
    EXPECT_EQ(as<float>(valueOf(-7)), -7.0f);
    EXPECT_EQ(as<bool>(valueOf(1)), true);
    EXPECT_EQ(as<std::string>(valueOf(-7)), "-7");
}

TEST(ValueConversion, ReadsAStringAsANumber) {
    EXPECT_EQ(as<int>(textValue("42")), 42);
    EXPECT_EQ(as<long>(textValue("42")), 42l);
    EXPECT_EQ(as<float>(textValue("1.5")), 1.5f);
    EXPECT_EQ(as<bool>(textValue("1")), true);
}

TEST(ValueConversion, ReadsAnEnumerationsTextAsItsNumber) {
    EXPECT_EQ(as<int>(textValue("2 - Narrow")), 2);
}

TEST(ValueConversion, OfAFloatTruncatesAtThePoint) {
    EXPECT_EQ(as<int>(valueOf(2.75f)), 2);
    EXPECT_EQ(as<bool>(valueOf(1.0f)), true);
    EXPECT_EQ(as<std::string>(valueOf(2.75f)), "2.750000");
}

TEST(ValueConversion, ThatFailsStillCountsAndKeepsWhatTheExtractionStored) {
    const test::ScopedAssertionCapture assertions;
    EXPECT_EQ(as<int>(textValue("abc"), 5), 0);
    EXPECT_EQ(as<int>(valueOf(1l << 40), 5), 2147483647);
    EXPECT_EQ(as<bool>(valueOf(2), false), true);
    EXPECT_EQ(as<int>(textValue(""), 5), 5);
    EXPECT_EQ(assertions.texts(), (std::vector<std::string>{
                                      "Assertion failed: Failed conversion from abc.",
                                      "Assertion failed: Failed conversion from 1099511627776.",
                                      "Assertion failed: Failed conversion from 2.",
                                      "Assertion failed: Failed conversion from .",
                                  }));
}

TEST(ValueConversion, ThatFailsCarriesItsIdentity) {
    const test::ScopedAssertionCapture assertions;
    as<float>(textValue("abc"));
    ASSERT_EQ(assertions.records().size(), 1u);
    EXPECT_STREQ(assertions.records()[0].file, "common/property_value");
    EXPECT_EQ(assertions.records()[0].line, 39);
}

TEST(ValueConversion, LeavesTheValueAsItWas) {
    const PropertyValue value = textValue("42");
    as<int>(value);
    EXPECT_TRUE(value.holds<std::string>());
    EXPECT_EQ(value.toString(), "42");
}

}  // namespace
}  // namespace quill
