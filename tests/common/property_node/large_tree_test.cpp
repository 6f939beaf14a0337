// Trees of tens of thousands of nodes: these take seconds if anything is quadratic.
#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>

#include "common/property_node.h"

namespace quill {
namespace {

constexpr int kNodes = 50000;

size_t residentBytes() {
    std::ifstream status("/proc/self/statm");
    size_t whole = 0, resident = 0;
    status >> whole >> resident;
    return resident * static_cast<size_t>(::sysconf(_SC_PAGESIZE));
}

std::string pathOf(int i, int siblings) {
    return "diags/" + std::to_string(i / siblings) + "/" + std::to_string(i % siblings);
}

void fillAndCheck(int siblings) {
    const PropertyNodePtr root = PropertyNode::createRoot();
    for (int i = 0; i < kNodes; ++i) root->getNode(pathOf(i, siblings), true)->set(i);
    for (int i = 0; i < kNodes; ++i) ASSERT_EQ(root->getNode(pathOf(i, siblings), false)->get<int>(), i);
    EXPECT_FALSE(root->exists(pathOf(kNodes, siblings)));
}

TEST(LargeTree, HoldsFiftyThousandSiblings) {
    fillAndCheck(kNodes);
}

TEST(LargeTree, HoldsFiftyThousandNodesInManyBranches) {
    fillAndCheck(10);
}

TEST(LargeTree, ListsFiftyThousandChildrenInOrder) {
    const PropertyNodePtr root = PropertyNode::createRoot();
    for (int i = kNodes; i > 0; --i) root->getNode(std::to_string(i), true);
    const std::vector<PropertyNodePtr> children = root->children();
    ASSERT_EQ(children.size(), size_t{kNodes});
    for (size_t i = 1; i < children.size(); ++i) ASSERT_LT(children[i - 1]->name(), children[i]->name());
}

// One full name each would be 1.1 GB.
TEST(LargeTree, APathOfManyComponentsTakesMemoryOfItsLength) {
    std::string path = "a";
    for (int i = 1; i < 32768; ++i) path += "/a";
    const PropertyNodePtr root = PropertyNode::createRoot();
    const size_t enough = residentBytes() + (size_t{128} << 20);
    const PropertyNodePtr node = root->getNode(path, true);
    EXPECT_LT(residentBytes(), enough);
    EXPECT_EQ(node->getFullName(), path);
}

TEST(LargeTree, ANodeMayHaveThousandsOfListenersAndEntries) {
    const PropertyNodePtr node = PropertyNode::createRoot();
    int calls = 0;
    std::vector<uint64_t> ids;
    for (int i = 0; i < kNodes; ++i) {
        ids.push_back(node->addListener([&](PropertyNode&, const PropertyChangeInfo&) { ++calls; }));
    }
    node->set(1);
    EXPECT_EQ(calls, kNodes);
    for (const uint64_t id : ids) node->removeListener(id);
    for (int i = 0; i < kNodes; ++i) node->setMeta(std::to_string(i), i);
    EXPECT_EQ(calls, kNodes);
    EXPECT_TRUE(node->hasMeta("49999"));
}

}  // namespace
}  // namespace quill
