// Replacing a value by a typed text of the same type.
#include <gtest/gtest.h>

#include "tests/common/property_value/typed_value.h"

namespace quill {
namespace {

using test::textValue;
using test::valueOf;

PropertyValue edited(PropertyValue value, const std::string& text) {
    EXPECT_TRUE(value.setFromWholeText(text)) << text;
    return value;
}

TEST(ValueFromText, KeepsTheType) {
    EXPECT_EQ(edited(valueOf(1), "2"), valueOf(2));
    EXPECT_EQ(edited(valueOf(1l), "2"), valueOf(2l));
    EXPECT_EQ(edited(valueOf(false), "1"), valueOf(true));
    EXPECT_EQ(edited(valueOf(1.0f), "2"), valueOf(2.0f));
    EXPECT_EQ(edited(textValue("a"), "2"), textValue("2"));
}

TEST(ValueFromText, MakesAnEmptyValueAString) {
    EXPECT_EQ(edited(PropertyValue(), "2"), textValue("2"));
    EXPECT_EQ(edited(PropertyValue(), ""), textValue(""));
}

TEST(ValueFromText, RefusedChangesNothing) {
    for (const PropertyValue& value : {valueOf(7), valueOf(7l), valueOf(true), valueOf(7.0f)}) {
        PropertyValue same = value;
        EXPECT_FALSE(same.setFromWholeText("12abc"));
        EXPECT_FALSE(same.setFromWholeText(""));
        EXPECT_EQ(same, value);
    }
}

}  // namespace
}  // namespace quill
