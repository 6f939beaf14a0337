// Access to a node's data in several steps under one lock.
#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "tests/common/property_node/change_recorder.h"

namespace quill {
namespace {

using Lock = PropertyNodeData::SharedDataLock;

TEST(SharedDataLock, ReachesTheData) {
    const PropertyNodePtr node = PropertyNode::createRoot();
    node->set(5);
    node->setMeta("help", true);
    const Lock lock(node.get(), nullptr);
    EXPECT_EQ(lock->value.toString(), "5");
    EXPECT_EQ(lock->change_counter, 2u);
    EXPECT_EQ(lock->metadata->size(), 1u);
    EXPECT_EQ(lock->meta("help").toString(), "1");
}

TEST(SharedDataLock, MetaMakesTheMapAndAnEmptyEntry) {
    const PropertyNodePtr node = PropertyNode::createRoot();
    const Lock lock(node.get(), nullptr);
    EXPECT_EQ(lock->metadata, nullptr);
    EXPECT_TRUE(lock->meta("new").empty());
    EXPECT_EQ(lock->metadata->size(), 1u);
    EXPECT_EQ(lock->change_counter, 0u);
}

TEST(SharedDataLock, MayBeTakenAgainByTheThreadThatHasIt) {
    const PropertyNodePtr node = PropertyNode::createRoot();
    Lock outer(node.get(), nullptr);
    const Lock inner(node.get(), &outer);
    node->set(1);
    EXPECT_EQ(inner->value.toString(), "1");
}

TEST(SharedDataLock, KeepsOtherThreadsOutUntilItIsUnlocked) {
    const PropertyNodePtr node = PropertyNode::createRoot();
    Lock lock(node.get(), nullptr);
    lock->value.set(1);
    std::thread other([&] { node->set(2); });
    lock->value.set(3);
    EXPECT_EQ(lock->value.toString(), "3");
    lock.unlock();
    other.join();
    EXPECT_EQ(node->get<int>(), 2);
}

TEST(SharedDataLock, UnlockingTwiceReleasesOnce) {
    const PropertyNodePtr node = PropertyNode::createRoot();
    Lock outer(node.get(), nullptr);
    {
        Lock inner(node.get(), nullptr);
        inner.unlock();
        inner.unlock();
    }
    std::atomic<bool> started{false};
    std::atomic<bool> entered{false};
    std::thread other([&] {
        started = true;
        node->set(2);
        entered = true;
    });
    while (!started) std::this_thread::yield();
    for (int chance = 0; chance < 1000; ++chance) std::this_thread::yield();
    EXPECT_FALSE(entered);
    outer.unlock();
    other.join();
    EXPECT_TRUE(entered);
}

TEST(SharedDataLock, AChangeMadeUnderItIsNotifiedByFireChangedOnData) {
    const PropertyNodePtr node = PropertyNode::createRoot();
    const test::ChangeRecorder seen(*node);
    Lock lock(node.get(), nullptr);
    lock->value.set(5);
    node->fireChangedOnData(lock, PropertyChangeInfo{2, "", lock->value, ++lock->change_counter});
    EXPECT_EQ(seen.changes(), (test::Changes{{2, "", "int32", "5", 1}}));
}

}  // namespace
}  // namespace quill
