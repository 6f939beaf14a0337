// An exception that a listener throws passes through the accessor that called it.
#include <gtest/gtest.h>

#include <stdexcept>
#include <thread>

#include "tests/common/property_node/change_recorder.h"

namespace quill {
namespace {

class ListenerException : public testing::Test {
  protected:
    ListenerException() {
        node_->addListener([](PropertyNode& node, const PropertyChangeInfo& info) {
            if (info.counter != 1) return;
            node.set(100);
            throw std::runtime_error("listener");
        });
    }
    const PropertyNodePtr node_ = PropertyNode::createRoot();
};

TEST_F(ListenerException, PassesThroughAndTheChangeStands) {
    EXPECT_THROW(node_->set(1), std::runtime_error);
    EXPECT_EQ(node_->get<int>(), 100);
}

TEST_F(ListenerException, ReleasesTheLock) {
    EXPECT_THROW(node_->set(1), std::runtime_error);
    std::thread([&] { node_->set(2); }).join();
    EXPECT_EQ(node_->get<int>(), 2);
}

TEST_F(ListenerException, EndsTheDeliveryOfThisChangeAndOfThoseThatWaited) {
    const test::ChangeRecorder behind(*node_);
    EXPECT_THROW(node_->set(1), std::runtime_error);
    EXPECT_TRUE(behind.changes().empty());
    node_->set(2);
    EXPECT_EQ(behind.counters(), test::Counters{3});
}

}  // namespace
}  // namespace quill
