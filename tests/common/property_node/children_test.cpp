// The children of one node, used directly.
#include "common/property_children.h"

#include <gtest/gtest.h>

#include "common/property_node.h"

namespace quill {
namespace {

// A node of that name, below a root of its own.
PropertyNodePtr named(const std::string& name) {
    return PropertyNode::createRoot()->getNode(name, true);
}

TEST(PropertyChildren, OfTwoWithTheSameNameTheFirstStays) {
    PropertyChildren children;
    const PropertyNodePtr first = named("a");
    const PropertyNodePtr second = named("a");
    EXPECT_EQ(children.add(first), first.get());
    EXPECT_EQ(children.add(second), first.get());
    EXPECT_EQ(children.list(), std::vector<PropertyNodePtr>{first});
    EXPECT_EQ(second.use_count(), 1);
}

TEST(PropertyChildren, AreFoundAfterEveryAddition) {
    PropertyChildren children;
    EXPECT_EQ(children.find("0"), nullptr);
    std::vector<PropertyNodePtr> added;
    for (int i = 0; i < 100; ++i) {
        added.push_back(named(std::to_string(i)));
        children.add(added.back());
        for (const PropertyNodePtr& each : added) ASSERT_EQ(children.find(each->name()), each.get());
        ASSERT_EQ(children.find("absent"), nullptr);
    }
    EXPECT_EQ(children.list(), added);
}

TEST(PropertyChildren, AreMovedToTheVectorOnRelease) {
    PropertyChildren children;
    const PropertyNodePtr child = named("a");
    children.add(child);
    const std::vector<PropertyNodePtr> released = children.release();
    EXPECT_EQ(released, std::vector<PropertyNodePtr>{child});
    EXPECT_EQ(children.find("a"), nullptr);
    EXPECT_TRUE(children.list().empty());
}

}  // namespace
}  // namespace quill
