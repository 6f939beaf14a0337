#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "common/dynlib.h"

namespace quill {
namespace {

std::string joined(const std::vector<const char*>& names) {
    return join(names.begin(), names.end(), ",");
}

TEST(Join, PutsTheSeparatorBetweenElementsOnly) {
    EXPECT_EQ(joined({"a", "b", "c"}), "a,b,c");
    EXPECT_EQ(joined({"a"}), "a");
}

TEST(Join, OfNothingIsEmpty) {
    EXPECT_EQ(joined({}), "");
}

TEST(Join, WritesNumbersInDefaultFormat) {
    const std::vector<int> numbers = {1, -2, 3000};
    EXPECT_EQ(join(numbers.begin(), numbers.end(), ", "), "1, -2, 3000");
}

}  // namespace
}  // namespace quill
