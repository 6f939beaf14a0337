// Nodes and their children.
#include <gtest/gtest.h>
#include <pthread.h>

#include "common/property_node.h"

namespace quill {
namespace {

TEST(Tree, RootHasNoNameValueOrChildren) {
    const PropertyNodePtr root = PropertyNode::createRoot();
    EXPECT_EQ(root->name(), "");
    EXPECT_TRUE(root->value().empty());
    EXPECT_TRUE(root->children().empty());
}

TEST(Tree, AbsentNodeIsNullAndIsNotMadeByAsking) {
    const PropertyNodePtr root = PropertyNode::createRoot();
    EXPECT_EQ(root->getNode("a/b", false), nullptr);
    EXPECT_FALSE(root->exists("a/b"));
    EXPECT_FALSE(root->exists("a"));
    EXPECT_TRUE(root->children().empty());
}

TEST(Tree, CreatingMakesMissingAncestorsWithoutValues) {
    const PropertyNodePtr root = PropertyNode::createRoot();
    root->getNode("a/b/c", true)->set(1);
    EXPECT_TRUE(root->exists("a/b"));
    EXPECT_TRUE(root->getNode("a/b", false)->value().empty());
}

TEST(Tree, CreatingFindsExistingNodes) {
    const PropertyNodePtr root = PropertyNode::createRoot();
    const PropertyNodePtr node = root->getNode("a/b", true);
    node->set(1);
    EXPECT_EQ(root->getNode("a/b", true), node);
    EXPECT_EQ(root->getNode("a/b", false), node);
}

TEST(Tree, ChildrenComeInByteOrderOfTheirNames) {
    const PropertyNodePtr root = PropertyNode::createRoot();
    for (const char* name : {"b", "\xc3\xa4", "B", "a", "a1", "10", "9"}) root->getNode(name, true);
    std::vector<std::string> names;
    for (const PropertyNodePtr& child : root->children()) names.push_back(child->name());
    EXPECT_EQ(names, (std::vector<std::string>{"10", "9", "B", "a", "a1", "b", "\xc3\xa4"}));
}

TEST(Tree, ChildrenAreDirectOnesOnly) {
    const PropertyNodePtr root = PropertyNode::createRoot();
    root->getNode("a/b/c", true);
    ASSERT_EQ(root->children().size(), 1u);
    EXPECT_EQ(root->children()[0]->getFullName(), "a");
}

TEST(Tree, ANodeThatIsHeldOutlivesItsTree) {
    PropertyNodePtr root = PropertyNode::createRoot();
    const PropertyNodePtr node = root->getNode("a/b", true);
    node->getNode("c", true)->set(3);
    root.reset();
    EXPECT_EQ(node->getFullName(), "a/b");
    EXPECT_EQ(node->getNode("c", false)->get<int>(), 3);
}

TEST(Tree, ADeepBranchIsDestroyedOnASmallStack) {
    std::string path;
    for (int depth = 0; depth < 3000; ++depth) path += "a/";
    PropertyNodePtr root = PropertyNode::createRoot();
    root->getNode(path, true);
    pthread_attr_t attributes;
    ASSERT_EQ(pthread_attr_init(&attributes), 0);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, 256 * 1024), 0);
    pthread_t thread;
    const auto drop = [](void* root_of_the_branch) -> void* {
        static_cast<PropertyNodePtr*>(root_of_the_branch)->reset();
        return nullptr;
    };
    ASSERT_EQ(pthread_create(&thread, &attributes, drop, &root), 0);
    ASSERT_EQ(pthread_join(thread, nullptr), 0);
    EXPECT_EQ(root, nullptr);
}

}  // namespace
}  // namespace quill
