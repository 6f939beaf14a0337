// Adding and removing listeners waits for no other listener.
#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <future>
#include <thread>
#include <vector>

#include "tests/common/property_node/change_recorder.h"

namespace quill {
namespace {

class ListenerListLock : public testing::Test {
  protected:
    // Runs `action` on another thread while a listener of the node waits for it.
    void whileAListenerWaits(const std::function<void()>& action) {
        const uint64_t id =
            node_->addListener([&](PropertyNode&, const PropertyChangeInfo&) { std::thread(action).join(); });
        node_->set(next_value_++);
        node_->removeListener(id);
    }

    const PropertyNodePtr node_ = PropertyNode::createRoot();
    int next_value_ = 1;
};

TEST_F(ListenerListLock, AThreadMayAddAListener) {
    int told = 0;
    whileAListenerWaits(
        [&] { node_->addListener([&](PropertyNode&, const PropertyChangeInfo&) { ++told; }); });
    EXPECT_EQ(told, 0);
    node_->set(0);
    EXPECT_EQ(told, 1);
}

TEST_F(ListenerListLock, AThreadMayRemoveAListenerThatIsCalledNext) {
    int told = 0;
    uint64_t later = 0;
    const uint64_t first = node_->addListener([&](PropertyNode&, const PropertyChangeInfo&) {
        std::thread([&] { node_->removeListener(later); }).join();
    });
    later = node_->addListener([&](PropertyNode&, const PropertyChangeInfo&) { ++told; });
    node_->set(1);
    node_->removeListener(first);
    EXPECT_EQ(told, 0);
}

TEST_F(ListenerListLock, AThreadMayRemoveAListenerThatHasReturned) {
    const test::ChangeRecorder earlier(*node_);
    whileAListenerWaits([&] { node_->removeListener(earlier.id()); });
    node_->set(0);
    EXPECT_EQ(earlier.counters(), test::Counters{1});
}

TEST_F(ListenerListLock, AThreadMayRemoveAnUnknownNumber) {
    whileAListenerWaits([&] { node_->removeListener(0); });
    whileAListenerWaits([&] { node_->removeListener(~uint64_t{0}); });
}

// A listener that runs, and returns when it is released.
class RunningListener {
  public:
    explicit RunningListener(PropertyNode& node)
        : id(node.addListener([this](PropertyNode&, const PropertyChangeInfo&) { run(); })),
          change_([&node] { node.set(1); }) {
        started_.get_future().wait();
    }
    ~RunningListener() { change_.join(); }

    void release() { released_.set_value(); }
    bool hasReturned() const { return returned_; }

  private:
    void run() {
        started_.set_value();
        released_.get_future().wait();
        for (int i = 0; i < 1000; ++i) std::this_thread::yield();
        returned_ = true;
    }

    std::promise<void> started_;
    std::promise<void> released_;
    std::atomic<bool> returned_{false};

  public:
    const uint64_t id;

  private:
    std::thread change_;
};

TEST_F(ListenerListLock, RemovalOnAnotherThreadWaitsForTheCallOfTheRemovedListener) {
    RunningListener running(*node_);
    running.release();
    node_->removeListener(running.id);
    EXPECT_TRUE(running.hasReturned());
}

TEST_F(ListenerListLock, EveryRemovalOfTheSameListenerWaits) {
    constexpr int kRemovals = 4;
    RunningListener running(*node_);
    std::atomic<int> started{0};
    std::vector<std::thread> removals;
    for (int i = 0; i < kRemovals; ++i) {
        removals.emplace_back([&] {
            ++started;
            node_->removeListener(running.id);
            EXPECT_TRUE(running.hasReturned());
        });
    }
    while (started < kRemovals) std::this_thread::yield();
    running.release();
    for (std::thread& removal : removals) removal.join();
}

TEST_F(ListenerListLock, RemovalWaitsUntilTheCapturesAreDestroyed) {
    struct Captured {
        std::atomic<bool>& destroyed;
        ~Captured() {
            for (int i = 0; i < 1000; ++i) std::this_thread::yield();
            destroyed = true;
        }
    };
    std::atomic<bool> destroyed{false};
    std::promise<void> removed_itself;
    uint64_t id = 0;
    id = node_->addListener([&, captured = std::shared_ptr<Captured>(new Captured{destroyed})](
                                PropertyNode& node, const PropertyChangeInfo&) {
        node.removeListener(id);
        removed_itself.set_value();
    });
    std::thread change([&] { node_->set(1); });
    removed_itself.get_future().wait();
    node_->removeListener(id);
    EXPECT_TRUE(destroyed);
    change.join();
}

// The call that removes the listener is nested in the listener's own call.
TEST_F(ListenerListLock, AListenerMayBeRemovedByAListenerThatItsOwnCallCauses) {
    const PropertyNodePtr later = node_->getNode("later", true);
    int calls = 0;
    const uint64_t id = node_->addListener([&](PropertyNode&, const PropertyChangeInfo& info) {
        ++calls;
        later->set(info.value.toString());
    });
    later->addListener([&](PropertyNode&, const PropertyChangeInfo&) { node_->removeListener(id); });
    node_->set(1);
    node_->set(2);
    EXPECT_EQ(calls, 1);
}

TEST_F(ListenerListLock, AListenerThatThrewMayBeRemovedOnAnotherThread) {
    const uint64_t id = node_->addListener([](PropertyNode&, const PropertyChangeInfo&) { throw 1; });
    EXPECT_THROW(node_->set(1), int);
    std::thread([&] { node_->removeListener(id); }).join();
    EXPECT_EQ(node_->set(2), 2u);
}

// The value is read after the listener was added: the listener is told of every change after the value read.
TEST_F(ListenerListLock, NoChangeIsLostBetweenAddingAListenerAndReadingTheValue) {
    constexpr int kLast = 2000;
    std::thread writer([&] {
        for (int i = 1; i <= kLast; ++i) node_->set(i);
    });
    std::vector<int> told;
    const uint64_t id = node_->addListener(
        [&](PropertyNode& node, const PropertyChangeInfo&) { told.push_back(node.get<int>()); });
    int read = 0;
    size_t told_before_reading = 0;
    {
        const PropertyNodeData::SharedDataLock lock(node_.get(), nullptr);
        lock->value.get(read);
        told_before_reading = told.size();
    }
    writer.join();
    node_->removeListener(id);
    std::vector<int> expected;
    for (int i = read + 1; i <= kLast; ++i) expected.push_back(i);
    told.erase(told.begin(), told.begin() + static_cast<std::ptrdiff_t>(told_before_reading));
    EXPECT_EQ(told, expected);
}

}  // namespace
}  // namespace quill
