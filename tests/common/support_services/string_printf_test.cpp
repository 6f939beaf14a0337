#include "common/string_printf.h"

#include <gtest/gtest.h>

#include <string>

namespace quill {
namespace {

TEST(StringPrintf, FillsItsConversions) {
    EXPECT_EQ(stringPrintf("diags/%s/%s", "basic", "x"), "diags/basic/x");
    EXPECT_EQ(stringPrintf("%d - %s", 2, "Narrow"), "2 - Narrow");
    EXPECT_EQ(stringPrintf("%f", 0.1), "0.100000");
}

TEST(StringPrintf, OfNothingIsEmpty) {
    EXPECT_EQ(stringPrintf("%s", ""), "");
}

TEST(StringPrintf, TakesAnyLength) {
    for (const size_t length : {1u, 15u, 16u, 255u, 256u, 1023u, 1024u, 1000000u}) {
        const std::string text(length, 'x');
        EXPECT_EQ(stringPrintf("<%s>", text.c_str()), "<" + text + ">");
    }
}

TEST(StringPrintf, GivesNothingForATextThatTheCLibraryRefuses) {
    EXPECT_EQ(stringPrintf("before %ls", L"\x1f600"), "");  // the C locale has no such character
}

TEST(StringPrintf, KeepsNulCharactersThatItPrints) {
    EXPECT_EQ(stringPrintf("a%cb", '\0'), std::string("a\0b", 3));
}

}  // namespace
}  // namespace quill
