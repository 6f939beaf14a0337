// float and its text.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

#include "tests/common/property_value/typed_value.h"

namespace quill {
namespace {

using test::parsed;
using test::parses;
using test::textOf;

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

uint32_t bitsOf(const std::string& text) {
    const float value = parsed<float>(text, 0.0f);
    uint32_t bits;
    std::memcpy(&bits, &value, sizeof(bits));
    return bits;
}

TEST(FloatText, HasSixDigitsAfterThePoint) {
    EXPECT_EQ(textOf(1.5f), "1.500000");
    EXPECT_EQ(textOf(0.1f), "0.100000");
    EXPECT_EQ(textOf(-2.0f), "-2.000000");
    EXPECT_EQ(textOf(0.0f), "0.000000");
    EXPECT_EQ(textOf(-0.0f), "-0.000000");
}

TEST(FloatText, OfATinyNumberIsZero) {
    EXPECT_EQ(textOf(1e-7f), "0.000000");
    EXPECT_EQ(textOf(5e-7f), "0.000000");
    EXPECT_EQ(textOf(6e-7f), "0.000001");
}

TEST(FloatText, OfAHugeNumberHasEveryDigit) {
    EXPECT_EQ(textOf(1e20f), "100000002004087734272.000000");
    EXPECT_EQ(textOf(std::numeric_limits<float>::max()), "340282346638528859811704183484516925440.000000");
}

TEST(FloatText, NamesNanWithItsSign) {
    EXPECT_EQ(textOf(kNan), "nan");
    EXPECT_EQ(textOf(std::copysign(kNan, -1.0f)), "-nan");
}

TEST(FloatText, NamesInfinityWithItsSign) {
    EXPECT_EQ(textOf(kInfinity), "inf");
    EXPECT_EQ(textOf(-kInfinity), "-inf");
}

TEST(FloatText, NanAndInfinityParseToExactBits) {
    EXPECT_EQ(bitsOf("-nan"), 0xFFC00000u);
    EXPECT_EQ(bitsOf("nan"), 0x7FC00000u);
    EXPECT_EQ(bitsOf("-inf"), 0xFF800000u);
    EXPECT_EQ(bitsOf("inf"), 0x7F800000u);
}

TEST(FloatText, NanAndInfinityRoundTrip) {
    for (const char* text : {"nan", "-nan", "inf", "-inf"})
        EXPECT_EQ(textOf(parsed<float>(text, 0.0f)), text);
}

TEST(FloatText, NanAndInfinityHaveOneSpelling) {
    for (const char* text :
         {"NaN", "NAN", "Inf", "INF", "infinity", "+inf", "+nan", " nan", " inf", "nan(1)"}) {
        EXPECT_FALSE(parses<float>(text)) << text;
    }
}

TEST(FloatText, ParsesNumbers) {
    EXPECT_EQ(parsed<float>("1.5", 0.0f), 1.5f);
    EXPECT_EQ(parsed<float>("-0.25", 0.0f), -0.25f);
    EXPECT_EQ(parsed<float>("1e3", 0.0f), 1000.0f);
    EXPECT_EQ(parsed<float>(" \t\n7", 0.0f), 7.0f);
    EXPECT_EQ(parsed<float>("+2.5", 0.0f), 2.5f);
    EXPECT_EQ(parsed<float>("2.5 volts", 0.0f), 2.5f);
}

TEST(FloatText, RefusesWhatIsNoNumber) {
    for (const char* text : {"", " ", "abc", ".", "-", "e5", "1e50", "-1e50"}) {
        EXPECT_FALSE(parses<float>(text)) << text;
    }
}

TEST(FloatText, IsThatOfTheFloatingPointHelper) {
    using Helper = property_internal::ValueTraitsHelperFloatingPoint<float>;
    float value = 0.0f;
    EXPECT_TRUE(Helper::tryFromString(&value, "1.5 volts"));
    EXPECT_EQ(Helper::toString(&value), "1.500000");
    EXPECT_TRUE(Helper::tryFromString(&value, "-nan"));
    EXPECT_EQ(Helper::toString(&value), "-nan");
    EXPECT_FALSE(Helper::tryFromString(&value, "abc"));
}

TEST(FloatText, SixDigitsRoundTripWhatTheyCanHold) {
    for (const float value : {0.5f, -123.25f, 1e20f, 65504.0f}) EXPECT_EQ(parsed(textOf(value), 0.0f), value);
}

}  // namespace
}  // namespace quill
