// Listeners that use the node while they are called.
#include <gtest/gtest.h>

#include "tests/common/property_node/change_recorder.h"

namespace quill {
namespace {

using test::ChangeRecorder;
using test::Counters;

class ListenerReentry : public testing::Test {
  protected:
    const PropertyNodePtr root_ = PropertyNode::createRoot();
    const PropertyNodePtr node_ = root_->getNode("a", true);

    // Raises the node by one until it holds `limit`.
    void raiseUpTo(int limit) {
        node_->addListener([limit](PropertyNode& node, const PropertyChangeInfo&) {
            const int value = node.get<int>();
            if (value < limit) node.set(value + 1);
        });
    }
};

TEST_F(ListenerReentry, MayReadTheNode) {
    int seen = 0;
    bool has = false;
    node_->addListener([&](PropertyNode& node, const PropertyChangeInfo&) {
        seen = node.get<int>();
        has = node.hasMeta("help");
    });
    node_->set(5);
    EXPECT_EQ(seen, 5);
    EXPECT_FALSE(has);
}

TEST_F(ListenerReentry, MaySetTheNodeAndSetReturnsTheLastCounter) {
    raiseUpTo(3);
    EXPECT_EQ(node_->set(1), 3u);
    EXPECT_EQ(node_->get<int>(), 3);
}

TEST_F(ListenerReentry, EveryListenerSeesNestedChangesInTheOrderOfTheCounter) {
    const ChangeRecorder before(*node_);
    raiseUpTo(4);
    const ChangeRecorder after(*node_);
    node_->set(1);
    EXPECT_EQ(before.counters(), (Counters{1, 2, 3, 4}));
    EXPECT_EQ(after.counters(), (Counters{1, 2, 3, 4}));
}

TEST_F(ListenerReentry, EveryNestedChangeCarriesTheValueThatItMade) {
    raiseUpTo(3);
    const ChangeRecorder seen(*node_);
    node_->set(1);
    EXPECT_EQ(seen.changes(),
              (test::Changes{{2, "", "int32", "1", 1}, {2, "", "int32", "2", 2}, {2, "", "int32", "3", 3}}));
}

TEST_F(ListenerReentry, ANestedSetReturnsItsCounterAtOnce) {
    uint64_t nested = 0;
    node_->addListener([&](PropertyNode& node, const PropertyChangeInfo& info) {
        if (info.kind == 2) nested = node.setMeta("mark", 1);
    });
    EXPECT_EQ(node_->set(5), 2u);
    EXPECT_EQ(nested, 2u);
}

TEST_F(ListenerReentry, MayChangeTheNodeAndSetMetaReturnsTheLastCounter) {
    node_->addListener([](PropertyNode& node, const PropertyChangeInfo& info) {
        if (info.kind == PropertyChangeInfo::kMeta) node.set(1);
    });
    EXPECT_EQ(node_->setMeta("mark", 1), 2u);
}

TEST_F(ListenerReentry, SettingTheSameValueCausesNoFurtherCall) {
    int calls = 0;
    node_->addListener([&](PropertyNode& node, const PropertyChangeInfo&) {
        ++calls;
        EXPECT_EQ(node.set(5), 0u);
    });
    node_->set(5);
    EXPECT_EQ(calls, 1);
}

TEST_F(ListenerReentry, MaySetALaterNodeWhoseListenerSetsAnother) {
    const PropertyNodePtr b = root_->getNode("b", true);
    const PropertyNodePtr c = root_->getNode("c", true);
    node_->addListener([&](PropertyNode& node, const PropertyChangeInfo&) { b->set(node.get<int>() + 1); });
    b->addListener([&](PropertyNode& node, const PropertyChangeInfo&) { c->set(node.get<int>() + 1); });
    node_->set(1);
    EXPECT_EQ(c->get<int>(), 3);
}

TEST_F(ListenerReentry, MayMakeAndFindNodes) {
    node_->addListener([&](PropertyNode& node, const PropertyChangeInfo&) {
        node.getNode("made", true)->set(1);
        EXPECT_TRUE(root_->exists("a/made"));
    });
    node_->set(1);
    EXPECT_TRUE(node_->exists("made"));
}

TEST_F(ListenerReentry, HappensForFillingDefaultsAndTextsToo) {
    const ChangeRecorder seen(*node_);
    raiseUpTo(3);
    int value = 0;
    node_->get<int>(value, 2);
    node_->setFromText("1", nullptr);
    EXPECT_EQ(seen.counters(), (Counters{1, 2, 3, 4, 5}));
}

}  // namespace
}  // namespace quill
