// What a text of others looks like in a line of a log.
#include "common/printable.h"

#include <gtest/gtest.h>

#include <string>

namespace quill {
namespace {

TEST(Printable, LeavesOrdinaryTextAlone) {
    EXPECT_EQ(printable(""), "");
    EXPECT_EQ(printable("beam_1.14|reference \\ \"~"), "beam_1.14|reference \\ \"~");
    EXPECT_EQ(printable("\u00e9 \u20ac \U0001F3A4"), "\u00e9 \u20ac \U0001F3A4");
}

TEST(Printable, IsOneLine) {
    EXPECT_EQ(printable("a\nb\r\n\tc"), "a\\nb\\r\\n\\tc");
}

TEST(Printable, HasNoControlCharacters) {
    for (int c = 0; c < 256; ++c) {
        for (const char shown : printable(std::string(1, static_cast<char>(c)))) {
            EXPECT_GE(shown, ' ') << c;
            EXPECT_NE(shown, '\x7f') << c;
        }
    }
    EXPECT_EQ(printable("\x1b[31mred\x1b[0m"), "\\x1b[31mred\\x1b[0m");
    EXPECT_EQ(printable(std::string("\0\a\x7f", 3)), "\\x00\\x07\\x7f");
}

TEST(Printable, ShowsC1AsBytesAndAsCharacters) {
    EXPECT_EQ(printable("\x9b"
                        "31m"),
              "\\x9b31m");
    EXPECT_EQ(printable("\u0080\u009b\u009f\u00a0"), "\\u0080\\u009b\\u009f\u00a0");
}

TEST(Printable, ShowsWhatChangesTheDirectionOrTheLine) {
    EXPECT_EQ(printable("\u2028\u202e\u2066\u200f\u061c"), "\\u2028\\u202e\\u2066\\u200f\\u061c");
    EXPECT_EQ(printable("\u2027\u202f\u2065\u2070"), "\u2027\u202f\u2065\u2070");
}

struct Malformed {
    const char* bytes;
    const char* shown;
};

class PrintableMalformed : public testing::TestWithParam<Malformed> {};

TEST_P(PrintableMalformed, ShowsEachByte) {
    EXPECT_EQ(printable(GetParam().bytes), GetParam().shown);
}

INSTANTIATE_TEST_SUITE_P(Utf8, PrintableMalformed,
                         testing::Values(Malformed{"\xff\xfe", "\\xff\\xfe"},  // no first bytes
                                         Malformed{"a\xc3", "a\\xc3"},         // cut at the end
                                         Malformed{"\xe2\x82", "\\xe2\\x82"},  // the same
                                         Malformed{"\xc3(", "\\xc3("},         // no continuation
                                         Malformed{"\xe2\x82\xc3\xa9",
                                                   "\\xe2\\x82\u00e9"},                 // goes on behind it
                                         Malformed{"\xc0\xaf", "\\xc0\\xaf"},           // longer than needed
                                         Malformed{"\xe0\x80\xaf", "\\xe0\\x80\\xaf"},  // the same
                                         Malformed{"\xf0\x80\x80\xaf", "\\xf0\\x80\\x80\\xaf"},
                                         Malformed{"\xed\xa0\x80", "\\xed\\xa0\\x80"},  // half a pair
                                         Malformed{"\xf4\x90\x80\x80", "\\xf4\\x90\\x80\\x80"},
                                         Malformed{"\xc2\x1b", "\\xc2\\x1b"}));

TEST(Printable, IsWholeWithoutALimit) {
    const std::string megabyte(1'048'576, 'x');
    EXPECT_EQ(printable(megabyte), megabyte);
}

TEST(Printable, IsWholeUpToItsLimit) {
    EXPECT_EQ(printable("12345", 5), "12345");
}

TEST(Printable, BeyondItsLimitIsCutAndSaysSo) {
    EXPECT_EQ(printable("123456", 5), "12345... (6 bytes)");
}

TEST(Printable, IsNotCutInsideACharacter) {
    EXPECT_EQ(printable("1234\u00e9", 5), "1234... (6 bytes)");
    EXPECT_EQ(printable("12\x1b", 5), "12... (3 bytes)");
}

}  // namespace
}  // namespace quill
