// The list of the static properties of the process.
#include <gtest/gtest.h>

#include <memory>

#include "common/properties.h"

namespace quill {
namespace {

size_t listed() {
    size_t count = 0;
    for (auto* each = StaticPropertyDeferredInit::s_head; each != nullptr; each = each->next) ++count;
    return count;
}

TEST(ListOfProperties, HoldsAPropertyAsLongAsAHandleToIt) {
    const size_t before = listed();
    {
        const StaticProperty<int> property("list/a", 1, nullptr);
        const StaticProperty<int> handle = property;
        EXPECT_EQ(listed(), before + 1);
    }
    EXPECT_EQ(listed(), before);
}

TEST(ListOfProperties, LosesOneFromItsMiddle) {
    const StaticProperty<int> first("list/a", 1, nullptr);
    const size_t before = listed();
    auto middle = std::make_unique<StaticProperty<int>>("list/b", 1, nullptr);
    const StaticProperty<int> last("list/c", 1, nullptr);
    middle.reset();
    EXPECT_EQ(listed(), before + 1);
}

}  // namespace
}  // namespace quill
