// A static property from its declaration to its binding.
#include <gtest/gtest.h>

#include <type_traits>

#include "common/properties.h"

namespace quill {
namespace {

StaticProperty<std::string> p_global =
    StaticProperty<std::string>("declaration/global", "default", __FILE__).setReadOnly(true);

bool isListed(const StaticPropertyDeferredInit* wanted) {
    const StaticPropertyDeferredInit* each = StaticPropertyDeferredInit::s_head;
    while (each != nullptr && each != wanted) each = each->next;
    return each != nullptr;
}

TEST(Declaration, RecordsPathDefaultAndFile) {
    const StaticProperty<int> property("a/b", 7, "file.cpp");
    EXPECT_EQ(property.data()->path, "a/b");
    EXPECT_EQ(property.data()->default_value, 7);
    EXPECT_STREQ(property.data()->file, "file.cpp");
}

TEST(Declaration, IsUnboundWithEmptyMetadataAndWithoutACallback) {
    const StaticProperty<int> property("a/b", 7, nullptr);
    EXPECT_EQ(property.data()->wrapper, nullptr);
    EXPECT_EQ(property.data()->on_initialized, nullptr);
    ASSERT_NE(property.data()->pending_metadata, nullptr);
    EXPECT_TRUE(property.data()->pending_metadata->empty());
}

TEST(Declaration, EntersTheFrontOfTheList) {
    const StaticProperty<int> first("a", 1, nullptr);
    const StaticProperty<bool> second("b", true, nullptr);
    EXPECT_EQ(StaticPropertyDeferredInit::s_head, second.data().get());
    EXPECT_EQ(second.data()->next, first.data().get());
}

TEST(Declaration, OfAGlobalIsListedWhenTheProgramStarts) {
    EXPECT_TRUE(isListed(p_global.data().get()));
}

TEST(Declaration, LeavesTheListWithItsLastHandle) {
    const StaticPropertyDeferredInit* data = nullptr;
    const StaticProperty<int> before("a", 1, nullptr);
    {
        const StaticProperty<int> property("b", 1, nullptr);
        const StaticProperty<int> after("c", 1, nullptr);
        const StaticProperty<int> copy = property;
        data = property.data().get();
        EXPECT_TRUE(isListed(data));
    }
    EXPECT_FALSE(isListed(data));
    EXPECT_EQ(StaticPropertyDeferredInit::s_head, before.data().get());
}

TEST(Declaration, CopiesAreTheSameProperty) {
    const StaticProperty<int> property("a", 1, nullptr);
    StaticProperty<int> copy = property;
    copy.setReadOnly(true);
    EXPECT_EQ(copy.data(), property.data());
    EXPECT_EQ(property.data()->pending_metadata->count("read_only"), 1u);
}

TEST(Declaration, SetReadOnlyStoresABoolAndCanBeChained) {
    StaticProperty<int> property("a", 1, nullptr);
    EXPECT_EQ(&property.setReadOnly(false), &property);
    property.setReadOnly(true).setReadOnly(true);
    ASSERT_EQ(property.data()->pending_metadata->size(), 1u);
    EXPECT_TRUE(property.data()->pending_metadata->at("read_only").holdsEqual(true));
    property.setReadOnly(false);
    EXPECT_TRUE(property.data()->pending_metadata->at("read_only").holdsEqual(false));
}

TEST(Declaration, IsADeferredInitialiserWithAnInterfaceOfTwo) {
    EXPECT_TRUE((std::is_base_of_v<StaticDeferredInit<StaticPropertyInitTag, StaticPropertyInitArgs>,
                                   StaticProperty<int>::Data>));
    EXPECT_TRUE(std::has_virtual_destructor_v<StaticPropertyDeferredInit>);
    EXPECT_TRUE(std::is_abstract_v<StaticPropertyInitTag>);
}

}  // namespace
}  // namespace quill
