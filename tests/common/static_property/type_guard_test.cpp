// The function beside a static property that does not compile for another type.
#include <gtest/gtest.h>

#include <type_traits>

#include "common/properties.h"

namespace quill {
namespace {

QUILL_STATIC_PROPERTY_TYPE_GUARD(p_example, std::string)

using Guard = decltype(&in_this_namespace_property_p_example_was_not_defined_with_type);

TEST(TypeGuard, TakesThePropertysTypeAndReturnsNothing) {
    EXPECT_TRUE((std::is_same_v<Guard, void (*)(std::string)>));
}

TEST(TypeGuard, RefusesAnotherType) {
    EXPECT_TRUE((std::is_invocable_v<Guard, std::string>));
    EXPECT_FALSE((std::is_invocable_v<Guard, bool>));
}

TEST(TypeGuard, DoesNothingAtRunTime) {
    in_this_namespace_property_p_example_was_not_defined_with_type("text");
}

}  // namespace
}  // namespace quill
