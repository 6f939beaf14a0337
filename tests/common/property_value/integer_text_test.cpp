// bool, int and long and their text.
#include <gtest/gtest.h>

#include <limits>

#include "tests/common/property_value/typed_value.h"

namespace quill {
namespace {

using test::parsed;
using test::parses;
using test::textOf;

TEST(IntegerText, IsDecimalWithoutPadding) {
    EXPECT_EQ(textOf(0), "0");
    EXPECT_EQ(textOf(-7), "-7");
    EXPECT_EQ(textOf(std::numeric_limits<int>::max()), "2147483647");
    EXPECT_EQ(textOf(std::numeric_limits<int>::min()), "-2147483648");
    EXPECT_EQ(textOf(std::numeric_limits<long>::max()), "9223372036854775807");
    EXPECT_EQ(textOf(std::numeric_limits<long>::min()), "-9223372036854775808");
}

TEST(IntegerText, RoundTripsAtTheLimits) {
    for (const int value : {std::numeric_limits<int>::max(), std::numeric_limits<int>::min(), 0, -1}) {
        EXPECT_EQ(parsed(textOf(value), 99), value);
    }
    for (const long value : {std::numeric_limits<long>::max(), std::numeric_limits<long>::min(), 0l, -1l}) {
        EXPECT_EQ(parsed(textOf(value), 99l), value);
    }
}

TEST(IntegerText, OnePastTheLimitsFails) {
    EXPECT_FALSE(parses<int>("2147483648"));
    EXPECT_FALSE(parses<int>("-2147483649"));
    EXPECT_FALSE(parses<long>("9223372036854775808"));
    EXPECT_FALSE(parses<long>("-9223372036854775809"));
}

TEST(IntegerText, BlanksBeforeAreSkippedAndTheRestIsNotExamined) {
    EXPECT_EQ(parsed("7 ", 0), 7);
    EXPECT_EQ(parsed(" \t\n\v\f\r7", 0), 7);
    EXPECT_EQ(parsed("12abc", 0), 12);
    EXPECT_EQ(parsed("2 - Narrow", 0), 2);
    EXPECT_EQ(parsed("1.9", 0l), 1l);
    EXPECT_EQ(parsed("0x10", 5), 0);
    EXPECT_EQ(parsed("+3", 0), 3);
}

TEST(IntegerText, WhatIsNoNumberFails) {
    for (const char* text : {"", " ", "abc", "-", "+", "--1", ".5", "nan"}) {
        EXPECT_FALSE(parses<int>(text)) << text;
        EXPECT_FALSE(parses<long>(text)) << text;
        EXPECT_FALSE(parses<bool>(text)) << text;
    }
}

TEST(IntegerText, AFailedParseMayChangeTheTarget) {
    int value = 5;
    EXPECT_FALSE(ValueTraitsHelper<int>::tryFromString(&value, "2147483648"));
    EXPECT_EQ(value, 2147483647);
    EXPECT_FALSE(ValueTraitsHelper<int>::tryFromString(&value, "abc"));
    EXPECT_EQ(value, 0);
}

TEST(BoolText, IsADigit) {
    EXPECT_EQ(textOf(true), "1");
    EXPECT_EQ(textOf(false), "0");
}

TEST(BoolText, ParsesDigitsOnly) {
    EXPECT_TRUE(parsed("1", false));
    EXPECT_FALSE(parsed("0", true));
    EXPECT_TRUE(parsed(" 1", false));
    EXPECT_TRUE(parsed("1abc", false));
}

TEST(BoolText, WordsAndOtherNumbersFail) {
    for (const char* text : {"true", "false", "2", "-1", "10", "yes"})
        EXPECT_FALSE(parses<bool>(text)) << text;
}

}  // namespace
}  // namespace quill
