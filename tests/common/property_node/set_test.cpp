// Setting a value: what counts as a change.
#include <gtest/gtest.h>

#include <limits>

#include "tests/common/property_node/change_recorder.h"

namespace quill {
namespace {

using test::ChangeRecorder;
using test::Changes;

class Set : public testing::Test {
  protected:
    const PropertyNodePtr node_ = PropertyNode::createRoot();
};

TEST_F(Set, TheSameValueTwiceCountsAndNotifiesOnce) {
    const ChangeRecorder seen(*node_);
    EXPECT_EQ(node_->set(5), 1u);
    EXPECT_EQ(node_->set(5), 0u);
    EXPECT_EQ(seen.changes(), (Changes{{2, "", "int32", "5", 1}}));
}

TEST_F(Set, ReturnsTheChangeCounter) {
    EXPECT_EQ(node_->set(1), 1u);
    EXPECT_EQ(node_->set(2), 2u);
    EXPECT_EQ(node_->setMeta("help", 1), 3u);
    EXPECT_EQ(node_->set(1), 4u);
}

TEST_F(Set, TheSameNumberAsALongChangesTheTypeAndNotifies) {
    node_->set(5);
    const ChangeRecorder seen(*node_);
    EXPECT_EQ(node_->set(5l), 2u);
    EXPECT_EQ(seen.changes(), (Changes{{2, "", "int64", "5", 2}}));
}

TEST_F(Set, TheSameTextInAnotherTypeIsAChange) {
    EXPECT_EQ(node_->set(true), 1u);
    EXPECT_EQ(node_->set(1), 2u);
    EXPECT_EQ(node_->set<std::string>("1"), 3u);
    EXPECT_EQ(node_->set(1), 4u);
}

TEST_F(Set, NanOverNanIsNoChange) {
    constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_EQ(node_->set(kNan), 1u);
    EXPECT_EQ(node_->set(kNan), 0u);
    EXPECT_EQ(node_->set(0.0f), 2u);
    EXPECT_EQ(node_->set(kNan), 3u);
}

TEST_F(Set, MinusZeroOverZeroIsNoChange) {
    node_->set(0.0f);
    EXPECT_EQ(node_->set(-0.0f), 0u);
}

TEST_F(Set, ZeroAndEmptyTextOnANodeWithoutAValueAreChanges) {
    EXPECT_EQ(node_->set(0), 1u);
    EXPECT_EQ(PropertyNode::createRoot()->set<std::string>(""), 1u);
    EXPECT_EQ(PropertyNode::createRoot()->set(false), 1u);
}

TEST_F(Set, EveryTypeIsKept) {
    node_->set(1.5f);
    EXPECT_EQ(node_->get<float>(), 1.5f);
    node_->set(1l << 40);
    EXPECT_EQ(node_->get<long>(), 1l << 40);
    node_->set(true);
    EXPECT_EQ(node_->get<bool>(), true);
    node_->set(-3);
    EXPECT_EQ(node_->get<int>(), -3);
    node_->set<std::string>("text");
    EXPECT_EQ(node_->get<std::string>(), "text");
}

TEST_F(Set, WritesAReadOnlyNode) {
    node_->setMeta("read_only", true);
    EXPECT_NE(node_->set(1), 0u);
    EXPECT_EQ(node_->get<int>(), 1);
}

TEST_F(Set, LeavesOtherNodesAlone) {
    const PropertyNodePtr child = node_->getNode("child", true);
    const ChangeRecorder seen(*node_);
    child->set(1);
    EXPECT_TRUE(seen.changes().empty());
    EXPECT_TRUE(node_->value().empty());
}

}  // namespace
}  // namespace quill
