// Listeners and several threads.
#include <gtest/gtest.h>

#include <future>
#include <numeric>

#include "tests/common/property_node/change_recorder.h"
#include "tests/common/property_node/threads.h"

namespace quill {
namespace {

constexpr int kThreads = 4;
constexpr int kRounds = 300;

test::Counters oneTo(uint64_t last) {
    test::Counters result(last);
    std::iota(result.begin(), result.end(), 1u);
    return result;
}

TEST(ListenerThreads, AListenerSeesTheChangesOfAllThreadsInOrder) {
    const PropertyNodePtr node = PropertyNode::createRoot();
    const test::ChangeRecorder seen(*node);
    test::together(kThreads, [&](int t) {
        for (int i = 0; i < kRounds; ++i) node->set(t * kRounds + i);
    });
    EXPECT_EQ(seen.counters(), oneTo(kThreads * kRounds));
}

TEST(ListenerThreads, NestedChangesKeepTheOrderToo) {
    const PropertyNodePtr node = PropertyNode::createRoot();
    node->addListener([](PropertyNode& changed, const PropertyChangeInfo& info) {
        if (info.kind == PropertyChangeInfo::kValue) changed.setMeta("echo", info.value.toString());
    });
    const test::ChangeRecorder seen(*node);
    test::together(kThreads, [&](int t) {
        for (int i = 0; i < kRounds; ++i) node->set(t * kRounds + i);
    });
    EXPECT_EQ(seen.counters(), oneTo(2 * kThreads * kRounds));
}

TEST(ListenerThreads, MayBeAddedAndRemovedWhileOthersChangeTheNode) {
    const PropertyNodePtr node = PropertyNode::createRoot();
    std::atomic<int> calls{0};
    test::together(kThreads, [&](int t) {
        for (int i = 0; i < kRounds; ++i) {
            if (t < 2) {
                node->set(t * kRounds + i);
            } else {
                node->removeListener(
                    node->addListener([&](PropertyNode&, const PropertyChangeInfo&) { ++calls; }));
            }
        }
    });
    const int before = calls;
    node->set(-1);
    EXPECT_EQ(calls, before);
}

TEST(ListenerThreads, AfterRemovalNoCallIsInProgress) {
    const PropertyNodePtr node = PropertyNode::createRoot();
    test::together(2, [&](int t) {
        for (int i = 0; i < kRounds; ++i) {
            if (t == 0) {
                node->set(i);
            } else {
                auto counter = std::make_unique<int>(0);
                const uint64_t id = node->addListener(
                    [raw = counter.get()](PropertyNode&, const PropertyChangeInfo&) { ++*raw; });
                node->removeListener(id);
                counter.reset();
            }
        }
    });
}

TEST(ListenerThreads, ThatWriteLaterNodesOnlyDoNotWaitForEachOther) {
    const PropertyNodePtr root = PropertyNode::createRoot();
    std::vector<PropertyNodePtr> chain;
    for (const char* name : {"a", "b", "c"}) chain.push_back(root->getNode(name, true));
    for (size_t i = 0; i + 1 < chain.size(); ++i) {
        chain[i]->addListener([&chain, i](PropertyNode&, const PropertyChangeInfo& info) {
            chain[i + 1]->set(info.value.toString());
        });
    }
    test::together(3, [&](int t) {
        for (int i = 0; i < kRounds; ++i) chain[size_t(t)]->set(std::to_string(t * kRounds + i));
    });
    chain[0]->set<std::string>("last");
    EXPECT_EQ(chain[2]->get<std::string>(), "last");
}

TEST(ListenerThreads, ASecondThreadWaitsUntilTheListenerHasReturned) {
    const PropertyNodePtr node = PropertyNode::createRoot();
    std::promise<void> entered;
    int from_listener = 0;
    node->addListener([&](PropertyNode& changed, const PropertyChangeInfo& info) {
        if (info.counter != 1) return;
        entered.set_value();
        for (int i = 0; i < 100; ++i) std::this_thread::yield();
        from_listener = changed.get<int>();
    });
    std::thread second([&] {
        entered.get_future().wait();
        node->set(2);
    });
    node->set(1);
    second.join();
    EXPECT_EQ(from_listener, 1);
    EXPECT_EQ(node->get<int>(), 2);
}

}  // namespace
}  // namespace quill
