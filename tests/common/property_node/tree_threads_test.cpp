// One tree, several threads that find and make nodes.
#include <gtest/gtest.h>

#include "common/property_node.h"
#include "tests/common/property_node/threads.h"

namespace quill {
namespace {

constexpr int kThreads = 4;
constexpr int kNodes = 500;

std::string pathOf(int i) {
    return "branch" + std::to_string(i % 10) + "/leaf" + std::to_string(i);
}

TEST(TreeThreads, ThatMakeTheSameNodesGetTheSameNodes) {
    const PropertyNodePtr root = PropertyNode::createRoot();
    std::vector<std::vector<PropertyNodePtr>> made(kThreads);
    test::together(kThreads, [&](int t) {
        for (int i = 0; i < kNodes; ++i) made[size_t(t)].push_back(root->getNode(pathOf(i), true));
    });
    for (const auto& each : made) EXPECT_EQ(each, made[0]);
    EXPECT_EQ(root->children().size(), 10u);
}

TEST(TreeThreads, ReadersListAndFindWhileWritersMake) {
    const PropertyNodePtr root = PropertyNode::createRoot();
    test::together(kThreads, [&](int t) {
        for (int i = 0; i < kNodes; ++i) {
            if (t == 0) {
                root->getNode(pathOf(i), true)->set(i);
            } else if (t == 1) {
                for (const PropertyNodePtr& child : root->children())
                    ASSERT_EQ(child->getFullName(), child->name());
            } else if (const PropertyNodePtr node = root->getNode(pathOf(i), false)) {
                ASSERT_TRUE(root->exists(pathOf(i)));
                ASSERT_EQ(node->getFullName(), pathOf(i));
            }
        }
    });
    EXPECT_EQ(root->getNode(pathOf(kNodes - 1), false)->get<int>(), kNodes - 1);
}

TEST(TreeThreads, ExistingNodesAreFoundWhileSiblingsAreMade) {
    const PropertyNodePtr root = PropertyNode::createRoot();
    const PropertyNodePtr first = root->getNode("0", true);
    std::atomic<int> made{1};
    test::together(kThreads, [&](int t) {
        for (int i = 1; t == 0 && i < kNodes; ++i) {
            root->getNode(std::to_string(i), true);
            made = i + 1;
        }
        while (t != 0 && made < kNodes) {
            const std::string newest = std::to_string(made - 1);
            ASSERT_EQ(root->getNode("0", false), first);
            ASSERT_EQ(root->getNode(newest, true)->name(), newest);
            ASSERT_EQ(root->getNode(newest, true), root->getNode(newest, false));
        }
    });
    EXPECT_EQ(root->children().size(), size_t{kNodes});
}

TEST(TreeThreads, ABranchThatIsHeldIsSearchedWhileTheTreeIsReleased) {
    for (int round = 0; round < 100; ++round) {
        PropertyNodePtr root = PropertyNode::createRoot();
        const PropertyNodePtr leaf = root->getNode("a/b/c", true);
        std::vector<PropertyNodePtr> held(kThreads, root->getNode("a/b", false));
        held[0] = std::move(root);
        test::together(kThreads, [&](int t) {
            if (t != 0) {
                EXPECT_EQ(held[size_t(t)]->getNode("c", false), leaf);
            }
            held[size_t(t)].reset();
        });
    }
}

TEST(TreeThreads, LookupDoesNotWaitForAListener) {
    const PropertyNodePtr root = PropertyNode::createRoot();
    const PropertyNodePtr node = root->getNode("a", true);
    node->addListener([&](PropertyNode&, const PropertyChangeInfo&) {
        std::thread([&] {
            EXPECT_TRUE(root->exists("a"));
            root->getNode("a/b", true);
            EXPECT_EQ(node->getFullName(), "a");
            EXPECT_EQ(node->children().size(), 1u);
        }).join();
    });
    node->set(1);
    EXPECT_TRUE(root->exists("a/b"));
}

TEST(TreeThreads, ThatReleaseBranchesAtTheSameTime) {
    for (int round = 0; round < 20; ++round) {
        PropertyNodePtr root = PropertyNode::createRoot();
        std::vector<PropertyNodePtr> held;
        for (int t = 0; t < kThreads; ++t)
            held.push_back(root->getNode("a/" + std::to_string(t) + "/b/c", true));
        held[0] = std::move(root);
        test::together(kThreads, [&](int t) { held[size_t(t)].reset(); });
    }
}

}  // namespace
}  // namespace quill
