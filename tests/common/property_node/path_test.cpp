// How a path names a node.
#include <gtest/gtest.h>

#include "common/property_node.h"

namespace quill {
namespace {

TEST(Path, IsSplitAtSlashes) {
    const PropertyNodePtr root = PropertyNode::createRoot();
    const PropertyNodePtr node = root->getNode("diags/basic/x", true);
    EXPECT_EQ(root->getNode("diags", false)->getNode("basic", false)->getNode("x", false), node);
}

TEST(Path, EmptyIsTheNodeItself) {
    const PropertyNodePtr root = PropertyNode::createRoot();
    const PropertyNodePtr node = root->getNode("a", true);
    EXPECT_EQ(root->getNode("", false), root);
    EXPECT_EQ(node->getNode("", true), node);
    EXPECT_EQ(node->getNode("//", false), node);
    EXPECT_TRUE(node->exists(""));
}

TEST(Path, EmptyComponentsAreSkipped) {
    const PropertyNodePtr root = PropertyNode::createRoot();
    const PropertyNodePtr node = root->getNode("a/b", true);
    for (const char* path : {"/a/b", "a/b/", "a//b", "//a///b//"})
        EXPECT_EQ(root->getNode(path, true), node) << path;
    EXPECT_EQ(root->children().size(), 1u);
}

TEST(Path, IsRelativeToTheNode) {
    const PropertyNodePtr root = PropertyNode::createRoot();
    const PropertyNodePtr a = root->getNode("a", true);
    const PropertyNodePtr c = a->getNode("b/c", true);
    EXPECT_EQ(root->getNode("a/b/c", false), c);
    EXPECT_EQ(a->getNode("a", false), nullptr);
}

TEST(Path, MatchesWholeComponents) {
    const PropertyNodePtr root = PropertyNode::createRoot();
    root->getNode("abc", true);
    EXPECT_FALSE(root->exists("ab"));
    EXPECT_FALSE(root->exists("abcd"));
    EXPECT_FALSE(root->exists("Abc"));
}

TEST(Path, DotsBlanksAndNulsAreNamesLikeAnyOther) {
    const PropertyNodePtr root = PropertyNode::createRoot();
    for (const std::string& name :
         {std::string("."), std::string(".."), std::string(" "), std::string("a\0b", 3)}) {
        EXPECT_EQ(root->getNode(name, true)->name(), name);
    }
    EXPECT_EQ(root->children().size(), 4u);
}

TEST(Path, FullNameHasNoSlashAtEitherEnd) {
    const PropertyNodePtr root = PropertyNode::createRoot();
    EXPECT_EQ(root->getFullName(), "");
    EXPECT_EQ(root->getNode("//diags//basic/x/", true)->getFullName(), "diags/basic/x");
    EXPECT_EQ(root->getNode("diags", false)->getFullName(), "diags");
}

}  // namespace
}  // namespace quill
