// The text form of arrays.
#include "webrtc_common/se_wrapper/diags/print_array.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <cmath>
#include <locale>
#include <vector>

using quill::media::se_wrapper::printArray;

namespace {

template <class T>
std::string printed(const std::vector<T>& values) {
    return printArray(values.data(), static_cast<int>(values.size()));
}

TEST(PrintArray, SeparatesElementsByCommaAndBlank) {
    EXPECT_EQ("[ 1, -2, 3 ]", printed<int>({1, -2, 3}));
}

TEST(PrintArray, WritesASingleElementWithoutSeparator) {
    EXPECT_EQ("[ 7 ]", printed<int>({7}));
}

TEST(PrintArray, WritesTwoBlanksBetweenTheBracketsWithoutElements) {
    EXPECT_EQ("[  ]", printed<int>({}));
    EXPECT_EQ("[  ]", printArray<float>(nullptr, 0));
}

TEST(PrintArray, TakesANegativeCountForNone) {
    const int value = 1;
    EXPECT_EQ("[  ]", printArray(&value, -1));
}

TEST(PrintArray, ReadsNoMoreThanTheCount) {
    const int values[] = {1, 2, 3};
    EXPECT_EQ("[ 1, 2 ]", printArray(values, 2));
}

TEST(PrintArray, WritesIntegersOfEachWidthAndSignInDecimal) {
    EXPECT_EQ("[ -32768, 32767 ]", printed<short>({SHRT_MIN, SHRT_MAX}));
    EXPECT_EQ("[ -2147483648, 2147483647 ]", printed<int>({INT_MIN, INT_MAX}));
    EXPECT_EQ("[ 0, 65535 ]", printed<unsigned short>({0, USHRT_MAX}));
    EXPECT_EQ("[ 0, 4294967295 ]", printed<unsigned int>({0, UINT_MAX}));
    EXPECT_EQ("[ -549755813888, 549755813887 ]", printed<long long>({-(1LL << 39), (1LL << 39) - 1}));
    EXPECT_EQ("[ 1099511627775 ]", printed<unsigned long long>({(1ULL << 40) - 1}));
    EXPECT_EQ("[ 18446744073709551615 ]", printed<unsigned long long>({ULLONG_MAX}));
}

TEST(PrintArray, WritesFloatsWithSixSignificantDigits) {
    EXPECT_EQ("[ 0.5, 1e-07, 1.25e+06, 123457, 1e+06, 0.0001, 1e-05 ]",
              printed<float>({0.5f, 0.0000001f, 1.25e6f, 123456.7f, 999999.9f, 0.0001f, 0.00001f}));
}

TEST(PrintArray, WritesExtremeFloats) {
    EXPECT_EQ("[ 0, -0, 3.40282e+38, 1.17549e-38, 1.4013e-45 ]",
              printed<float>({0.0f, -0.0f, FLT_MAX, FLT_MIN, FLT_TRUE_MIN}));
    EXPECT_EQ("[ inf, -inf, nan, -nan ]",
              printed<float>({INFINITY, -INFINITY, std::copysign(NAN, 1.0f), std::copysign(NAN, -1.0f)}));
}

TEST(PrintArray, HoldsALongArray) {
    const std::string text = printed(std::vector<int>(100'000, 1));
    EXPECT_EQ(3u * 100'000 + 2, text.size());
    EXPECT_EQ("1, 1 ]", text.substr(text.size() - 6));
}

// Grouped digits, and a comma as decimal point.
struct OtherPunctuation : std::numpunct<char> {
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
    char do_decimal_point() const override { return ','; }
};

TEST(PrintArray, IsTheSameInEveryLocaleOfTheHost) {
    std::locale::global(std::locale(std::locale::classic(), new OtherPunctuation));
    EXPECT_EQ("[ 1234567 ]", printed<int>({1234567}));
    EXPECT_EQ("[ 0.5 ]", printed<float>({0.5f}));
}

}  // namespace
