// Parsing of typed values: the whole text must be used.
#include <gtest/gtest.h>

#include <cmath>

#include "tests/common/property_value/typed_value.h"

namespace quill {
namespace {

template <class T>
bool takes(const std::string& text) {
    T value{};
    return ValueTraitsHelper<T>::tryFromWholeText(&value, text);
}

template <class T>
T whole(const std::string& text) {
    T value{};
    EXPECT_TRUE(ValueTraitsHelper<T>::tryFromWholeText(&value, text)) << text;
    return value;
}

TEST(WholeText, MayHaveBlanksAroundTheValue) {
    EXPECT_EQ(whole<int>(" 42\t\n"), 42);
    EXPECT_EQ(whole<long>(" -42 "), -42l);
    EXPECT_EQ(whole<bool>(" 1 "), true);
    EXPECT_EQ(whole<float>(" 1.5\r\n"), 1.5f);
    EXPECT_TRUE(std::isinf(whole<float>(" inf ")));
    EXPECT_TRUE(std::isnan(whole<float>("\tnan")));
}

TEST(WholeText, TakesEveryBlankOfTheCLocale) {
    for (const char blank : {' ', '\t', '\n', '\v', '\f', '\r'}) {
        const std::string before = blank + std::string("-1");
        const std::string after = std::string("-1") + blank;
        EXPECT_EQ(whole<int>(before), -1) << int{blank};
        EXPECT_EQ(whole<int>(after), -1) << int{blank};
        EXPECT_EQ(whole<long>(after), -1) << int{blank};
        EXPECT_EQ(whole<float>(after), -1.0f) << int{blank};
        EXPECT_TRUE(std::isnan(whole<float>(blank + std::string("nan") + blank))) << int{blank};
        EXPECT_FALSE(takes<int>(std::string(1, blank))) << int{blank};
    }
}

TEST(WholeText, RefusesLeftovers) {
    for (const char* text : {"12abc", "1 2", "1.5", "2 - Narrow", "1,000", "0x10", "12\vx"}) {
        EXPECT_FALSE(takes<int>(text)) << text;
        EXPECT_FALSE(takes<long>(text)) << text;
        EXPECT_FALSE(takes<bool>(text)) << text;
    }
    for (const char* text : {"1.5x", "1.5 2", "1,5", "0x1p3", "nan 1", "inf."})
        EXPECT_FALSE(takes<float>(text)) << text;
}

TEST(WholeText, RefusesAnEmbeddedNul) {
    EXPECT_FALSE(takes<int>(std::string("12\0", 3)));
}

TEST(WholeText, RefusesNothingAndBlanks) {
    for (const char* text : {"", " ", "\t\n"}) {
        EXPECT_FALSE(takes<int>(text));
        EXPECT_FALSE(takes<long>(text));
        EXPECT_FALSE(takes<bool>(text));
        EXPECT_FALSE(takes<float>(text));
    }
}

TEST(WholeText, RefusesNumbersOutOfRange) {
    EXPECT_FALSE(takes<int>("2147483648"));
    EXPECT_FALSE(takes<long>("9223372036854775808"));
    EXPECT_FALSE(takes<bool>("2"));
    EXPECT_FALSE(takes<float>("1e39"));
}

TEST(WholeText, AStringKeepsItsBlanks) {
    EXPECT_EQ(whole<std::string>(" a b "), " a b ");
    EXPECT_EQ(whole<std::string>(""), "");
}

}  // namespace
}  // namespace quill
