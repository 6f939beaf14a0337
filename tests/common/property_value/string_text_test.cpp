// Strings are their own text.
#include <gtest/gtest.h>

#include "tests/common/property_value/typed_value.h"

namespace quill {
namespace {

TEST(StringText, IsTheStringItself) {
    for (const std::string& text :
         {std::string(), std::string(" a b "), std::string("a\0b", 3), std::string(5000, 'x')}) {
        EXPECT_EQ(test::textOf(text), text);
        EXPECT_EQ(test::parsed<std::string>(text, "otherwise"), text);
    }
}

}  // namespace
}  // namespace quill
