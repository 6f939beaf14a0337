// A value gives back the characters of a text that are too many to lie in the string itself.
#include <gtest/gtest.h>

#include "common/property_value.h"
#include "tests/common/property_node/allocation_count.h"

namespace quill {
namespace {

class LongText : public testing::Test {
  protected:
    LongText() { value_.set<std::string>(std::string(100, 'x')); }
    PropertyValue value_;
};

TEST_F(LongText, IsGivenBackWithItsBlockWhenTheValueIsCleared) {
    EXPECT_EQ(test::releasesOf([&] { value_.clear(); }), 2u);
}

TEST_F(LongText, IsGivenBackWhenAShortOneReplacesIt) {
    // A sanitizer's realloc() gives back the block, too.
    EXPECT_GE(test::releasesOf([&] { value_.set<std::string>("a"); }), 1u);
}

}  // namespace
}  // namespace quill
