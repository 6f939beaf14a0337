// Copies are independent.
#include <gtest/gtest.h>

#include <utility>

#include "tests/common/property_value/typed_value.h"

namespace quill {
namespace {

using test::textValue;
using test::valueOf;

const char* const kLong = "a text that is longer than any string keeps within itself";

TEST(ValueCopy, KeepsTypeAndValue) {
    for (const PropertyValue& original :
         {valueOf(1.5f), valueOf(2l), valueOf(true), valueOf(3), textValue(kLong)}) {
        PropertyValue copy;
        copy = original;
        EXPECT_STREQ(copy.typeName(), original.typeName());
        EXPECT_EQ(copy.toString(), original.toString());
        EXPECT_EQ(copy.size(), original.size());
        EXPECT_NE(copy.address(), original.address());
    }
}

TEST(ValueCopy, DoesNotFollowTheOriginal) {
    PropertyValue original = textValue(kLong);
    const PropertyValue copy = original;
    original.set<std::string>("changed");
    EXPECT_EQ(copy.toString(), kLong);
}

TEST(ValueCopy, ReplacesWhateverWasThere) {
    PropertyValue value = textValue(kLong);
    value = valueOf(3);
    EXPECT_EQ(value.toString(), "3");
    value = textValue(kLong);
    EXPECT_EQ(value.toString(), kLong);
    value = textValue("other");
    EXPECT_EQ(value.toString(), "other");
}

TEST(ValueCopy, OfAnEmptyValueEmpties) {
    PropertyValue value = textValue(kLong);
    const PropertyValue none;
    value = none;
    EXPECT_TRUE(value.empty());
}

TEST(ValueCopy, OfItselfChangesNothing) {
    PropertyValue value = textValue(kLong);
    const PropertyValue& same = value;
    value = same;
    EXPECT_EQ(value.toString(), kLong);
}

TEST(ValueCopy, MovingLeavesTheSourceEmpty) {
    PropertyValue source = textValue(kLong);
    const void* const address = source.address();
    PropertyValue target(std::move(source));
    EXPECT_EQ(target.address(), address);
    EXPECT_TRUE(source.empty());
    source = std::move(target);
    EXPECT_EQ(source.toString(), kLong);
}

}  // namespace
}  // namespace quill
