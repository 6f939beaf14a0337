// When two values are the same.
#include <gtest/gtest.h>

#include <limits>

#include "tests/common/property_value/typed_value.h"

namespace quill {
namespace {

using test::textValue;
using test::valueOf;

TEST(ValueEquality, NeedsTheSameTypeAndValue) {
    EXPECT_EQ(valueOf(1), valueOf(1));
    EXPECT_NE(valueOf(1), valueOf(2));
    EXPECT_EQ(textValue("a"), textValue("a"));
    EXPECT_NE(textValue("a"), textValue("b"));
}

TEST(ValueEquality, DoesNotCrossTypesEvenWithTheSameText) {
    EXPECT_NE(valueOf(1), valueOf(1l));
    EXPECT_NE(valueOf(1), valueOf(true));
    EXPECT_NE(valueOf(1), textValue("1"));
    EXPECT_NE(valueOf(1), valueOf(1.0f));
}

TEST(ValueEquality, OfNanHolds) {
    constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(valueOf(kNan), valueOf(kNan));
    EXPECT_NE(valueOf(kNan), valueOf(0.0f));
}

TEST(ValueEquality, OfTwoEmptyValuesHolds) {
    EXPECT_EQ(PropertyValue(), PropertyValue());
    EXPECT_NE(PropertyValue(), valueOf(0));
    EXPECT_NE(textValue(""), PropertyValue());
}

TEST(ValueEquality, WithATypedValueNeedsTheSameTypeToo) {
    EXPECT_TRUE(valueOf(1).holdsEqual(1));
    EXPECT_FALSE(valueOf(1).holdsEqual(1l));
    EXPECT_FALSE(valueOf(1).holdsEqual(2));
    EXPECT_FALSE(PropertyValue().holdsEqual(0));
    EXPECT_TRUE(textValue("a").holdsEqual(std::string("a")));
}

}  // namespace
}  // namespace quill
