// What a listener receives.
#include <gtest/gtest.h>

#include <memory>
#include <thread>

#include "tests/common/property_node/change_recorder.h"

namespace quill {
namespace {

using test::ChangeRecorder;
using test::Changes;

class Listener : public testing::Test {
  protected:
    const PropertyNodePtr node_ = PropertyNode::createRoot()->getNode("a/b", true);
};

TEST_F(Listener, SeesEveryChangeInTheOrderOfTheCounter) {
    const ChangeRecorder seen(*node_);
    node_->set(1);
    node_->setMeta<std::string>("help", "h");
    node_->set<std::string>("x");
    EXPECT_EQ(seen.changes(),
              (Changes{{2, "", "int32", "1", 1}, {3, "help", "string", "h", 2}, {2, "", "string", "x", 3}}));
}

TEST_F(Listener, IsGivenTheNode) {
    const PropertyNode* given = nullptr;
    node_->addListener([&](PropertyNode& node, const PropertyChangeInfo&) { given = &node; });
    node_->set(1);
    EXPECT_EQ(given, node_.get());
}

TEST_F(Listener, RunsOnTheThreadThatMadeTheChange) {
    std::thread::id called;
    node_->addListener(
        [&](PropertyNode&, const PropertyChangeInfo&) { called = std::this_thread::get_id(); });
    std::thread::id expected;
    std::thread([&] {
        expected = std::this_thread::get_id();
        node_->set(1);
    }).join();
    EXPECT_EQ(called, expected);
}

TEST_F(Listener, HasEnteredAndLeftBeforeSetReturns) {
    bool done = false;
    node_->addListener([&](PropertyNode&, const PropertyChangeInfo&) { done = true; });
    node_->set(1);
    EXPECT_TRUE(done);
}

TEST_F(Listener, DoesNotSeeEarlierChanges) {
    node_->set(1);
    const ChangeRecorder seen(*node_);
    EXPECT_TRUE(seen.changes().empty());
}

TEST_F(Listener, SeesItsOwnNodeOnly) {
    const ChangeRecorder seen(*node_);
    node_->getNode("child", true)->set(1);
    EXPECT_TRUE(seen.changes().empty());
}

TEST_F(Listener, ListenersAreCalledInTheOrderOfTheirAddition) {
    std::string order;
    for (const char name : {'a', 'b', 'c'}) {
        node_->addListener([&order, name](PropertyNode&, const PropertyChangeInfo&) { order += name; });
    }
    node_->set(1);
    EXPECT_EQ(order, "abc");
}

TEST_F(Listener, RemovedIsNotCalledAgain) {
    const ChangeRecorder removed(*node_);
    const ChangeRecorder kept(*node_);
    node_->set(1);
    node_->removeListener(removed.id());
    node_->set(2);
    EXPECT_EQ(removed.counters(), test::Counters{1});
    EXPECT_EQ(kept.counters(), (test::Counters{1, 2}));
}

TEST_F(Listener, RemovedReleasesItsCaptures) {
    const auto captured = std::make_shared<int>(1);
    const uint64_t id = node_->addListener([captured](PropertyNode&, const PropertyChangeInfo&) {});
    EXPECT_EQ(captured.use_count(), 2);
    node_->removeListener(id);
    EXPECT_EQ(captured.use_count(), 1);
}

TEST_F(Listener, NumbersAreNeverZeroNorUsedTwice) {
    const uint64_t first = node_->addListener([](PropertyNode&, const PropertyChangeInfo&) {});
    node_->removeListener(first);
    const uint64_t second = node_->addListener([](PropertyNode&, const PropertyChangeInfo&) {});
    EXPECT_NE(first, 0u);
    EXPECT_NE(first, second);
}

TEST_F(Listener, RemovingAnUnknownNumberDoesNothing) {
    node_->removeListener(1);
    const ChangeRecorder seen(*node_);
    node_->removeListener(0);
    node_->removeListener(seen.id() + 1);
    node_->set(1);
    EXPECT_EQ(seen.changes().size(), 1u);
}

}  // namespace
}  // namespace quill
