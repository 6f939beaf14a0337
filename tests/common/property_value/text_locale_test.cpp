// The host's locale does not reach the texts of the tree.
#include <gtest/gtest.h>

#include <clocale>
#include <locale>

#include "tests/common/property_value/typed_value.h"

namespace quill {
namespace {

struct CommaForPoint : std::numpunct<char> {
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

class TextInAnotherLocale : public testing::Test {
  protected:
    TextInAnotherLocale()
        : before_(std::locale::global(std::locale(std::locale::classic(), new CommaForPoint))) {
        std::setlocale(LC_ALL, "de_DE.UTF-8");  // where it is installed
    }
    ~TextInAnotherLocale() override {
        std::setlocale(LC_ALL, "C");
        std::locale::global(before_);
    }

  private:
    std::locale before_;
};

TEST_F(TextInAnotherLocale, IsWrittenTheSame) {
    EXPECT_EQ(test::textOf(1234567), "1234567");
    EXPECT_EQ(test::textOf(1234567l), "1234567");
    EXPECT_EQ(test::textOf(1234.5f), "1234.500000");
}

TEST_F(TextInAnotherLocale, IsReadTheSame) {
    EXPECT_EQ(test::parsed("1.500000", 0.0f), 1.5f);
    EXPECT_EQ(test::parsed("1234567", 0), 1234567);
    EXPECT_EQ(test::parsed("1.234", 0), 1);
}

}  // namespace
}  // namespace quill
