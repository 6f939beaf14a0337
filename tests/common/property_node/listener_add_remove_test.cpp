// Listeners that are added and removed while listeners are being called.
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <utility>

#include "tests/common/property_node/change_recorder.h"

namespace quill {
namespace {

using test::ChangeRecorder;
using test::Counters;

class AddingAndRemoving : public testing::Test {
  protected:
    const PropertyNodePtr node_ = PropertyNode::createRoot();

    // Runs `action` in a listener at the first change.
    template <class Action>
    void atFirstChange(Action action) {
        node_->addListener([action](PropertyNode& node, const PropertyChangeInfo& info) {
            if (info.counter == 1) action(node);
        });
    }
};

TEST_F(AddingAndRemoving, OneThatIsAddedSeesLaterChangesOnly) {
    std::optional<ChangeRecorder> added;
    atFirstChange([&](PropertyNode& node) { added.emplace(node); });
    node_->set(1);
    EXPECT_TRUE(added->changes().empty());
    node_->set(2);
    EXPECT_EQ(added->counters(), Counters{2});
}

TEST_F(AddingAndRemoving, OneThatIsAddedSeesTheChangesMadeAfterItInTheSameCall) {
    std::optional<ChangeRecorder> added;
    atFirstChange([&](PropertyNode& node) {
        node.set(2);
        added.emplace(node);
        node.set(3);
    });
    node_->set(1);
    EXPECT_EQ(added->counters(), Counters{3});
}

TEST_F(AddingAndRemoving, OneThatIsRemovedDoesNotSeeLaterChanges) {
    uint64_t id = 0;
    atFirstChange([&](PropertyNode& node) { node.removeListener(id); });
    const ChangeRecorder removed(*node_);
    id = removed.id();
    node_->set(1);
    node_->set(2);
    EXPECT_TRUE(removed.changes().empty());
}

TEST_F(AddingAndRemoving, OneThatIsRemovedDoesNotSeeChangesThatWaited) {
    const ChangeRecorder removed(*node_);
    atFirstChange([&](PropertyNode& node) {
        node.set(2);
        node.removeListener(removed.id());
    });
    node_->set(1);
    EXPECT_EQ(removed.counters(), Counters{1});
}

TEST_F(AddingAndRemoving, OneMayRemoveItselfAndIsKeptUntilItsCallEnds) {
    const auto captured = std::make_shared<int>(7);
    uint64_t id = 0;
    int seen = 0;
    id = node_->addListener([captured, &id, &seen](PropertyNode& node, const PropertyChangeInfo&) {
        node.removeListener(id);
        seen += *captured;
    });
    node_->set(1);
    node_->set(2);
    EXPECT_EQ(seen, 7);
    EXPECT_EQ(captured.use_count(), 1);
}

TEST_F(AddingAndRemoving, ACaptureOfOneThatRemovedItselfMayRemoveTheNextInItsDestructor) {
    struct RemovesInDestructor {
        ~RemovesInDestructor() { node.removeListener(id); }
        PropertyNode& node;
        const uint64_t& id;
    };
    uint64_t own = 0;
    uint64_t next = 0;
    std::shared_ptr<RemovesInDestructor> held(new RemovesInDestructor{*node_, next});
    own = node_->addListener([held = std::move(held), &own](PropertyNode& node, const PropertyChangeInfo&) {
        node.removeListener(own);
    });
    const ChangeRecorder removed(*node_);
    next = removed.id();
    const ChangeRecorder kept(*node_);
    node_->set(1);
    EXPECT_TRUE(removed.changes().empty());
    EXPECT_EQ(kept.counters(), Counters{1});
}

TEST_F(AddingAndRemoving, AllMayBeRemovedAtOnce) {
    std::vector<uint64_t> ids;
    int calls = 0;
    for (int i = 0; i < 3; ++i) {
        ids.push_back(node_->addListener([&](PropertyNode& node, const PropertyChangeInfo&) {
            ++calls;
            for (const uint64_t id : ids) node.removeListener(id);
            node.set(99);
        }));
    }
    node_->set(1);
    node_->set(2);
    EXPECT_EQ(calls, 1);
}

TEST_F(AddingAndRemoving, OneThatReplacesItselfIsCalledOnceAChange) {
    int calls = 0;
    uint64_t id = 0;
    PropertyListener again = [&](PropertyNode& node, const PropertyChangeInfo&) {
        ++calls;
        node.removeListener(id);
        id = node.addListener(again);
    };
    id = node_->addListener(again);
    node_->set(1);
    EXPECT_EQ(calls, 1);
    node_->set(2);
    EXPECT_EQ(calls, 2);
}

TEST_F(AddingAndRemoving, ACaptureOfARemovedOneMayUseTheNodeInItsDestructor) {
    struct SetsInDestructor {
        explicit SetsInDestructor(PropertyNode& n) : node(n) {}
        ~SetsInDestructor() {
            node.removeListener(node.addListener([](PropertyNode&, const PropertyChangeInfo&) {}));
        }
        PropertyNode& node;
    };
    const auto captured = std::make_shared<SetsInDestructor>(*node_);
    const uint64_t id = node_->addListener(
        [held = std::make_shared<SetsInDestructor>(*node_)](PropertyNode&, const PropertyChangeInfo&) {});
    node_->removeListener(id);
    const ChangeRecorder seen(*node_);
    node_->set(1);
    EXPECT_EQ(seen.counters(), Counters{1});
}

// The branch is destroyed after its tree.
TEST_F(AddingAndRemoving, ACaptureFindsNoChildrenWhenItsNodeIsDestroyed) {
    struct LooksInDestructor {
        PropertyNode& node;
        int& found;
        ~LooksInDestructor() {
            found = (node.exists("child") ? 1 : 0) + static_cast<int>(node.children().size());
        }
    };
    int found = -1;
    PropertyNodePtr branch = PropertyNode::createRoot()->getNode("branch", true);
    branch->getNode("child", true);
    branch->addListener([held = std::shared_ptr<LooksInDestructor>(new LooksInDestructor{*branch, found})](
                            PropertyNode&, const PropertyChangeInfo&) {});
    branch.reset();
    EXPECT_EQ(found, 0);
}

}  // namespace
}  // namespace quill
