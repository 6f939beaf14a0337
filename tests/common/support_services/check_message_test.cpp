// The message of a failed comparison.
#include <gtest/gtest.h>

#include <locale>
#include <memory>
#include <string>

#include "common/check.h"

namespace quill {
namespace {

template <class A, class B>
std::string message(const A& a, const B& b, const char* text) {
    return *std::unique_ptr<std::string>(MakeCheckOpString(a, b, text));
}

struct GroupedDigits : std::numpunct<char> {
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(CheckMessage, IsTheTextWithBothValues) {
    EXPECT_EQ(message(0, 5, "x == y"), "x == y (0 vs. 5)");
}

TEST(CheckMessage, OfANullTextIsEmpty) {
    EXPECT_EQ(message(0, 5, nullptr), "");
}

TEST(CheckMessage, WritesAnUnsignedShortAsANumber) {
    const unsigned short largest = 65535;
    EXPECT_EQ(message(160, largest, "a == b"), "a == b (160 vs. 65535)");
    EXPECT_EQ(message(largest, -1, "a == b"), "a == b (65535 vs. -1)");
}

TEST(CheckMessage, OfAnEmptyTextHasTheValuesOnly) {
    EXPECT_EQ(message(1, 2, ""), " (1 vs. 2)");
}

TEST(CheckMessage, IsTheSameInEveryLocale) {
    const std::locale before = std::locale::global(std::locale(std::locale::classic(), new GroupedDigits));
    const std::string text = message(100000, 2, "a == b");
    std::locale::global(before);
    EXPECT_EQ(text, "a == b (100000 vs. 2)");
}

}  // namespace
}  // namespace quill
