// Every operation of the property tree, from several threads, on the same few nodes.
#include <gtest/gtest.h>

#include <random>

#include "common/property_node.h"
#include "tests/common/property_node/change_recorder.h"
#include "tests/common/property_node/threads.h"
#include "tests/support/log_capture.h"

namespace quill {
namespace {

constexpr int kThreads = 4;
constexpr int kActions = 4000;
constexpr const char* kPaths[] = {"a", "a/b", "a/b/c", "d", "e/f"};

// One thread's view of the tree: its random numbers and the listeners that it added.
class User {
  public:
    User(PropertyNodePtr root, int number) : root_(std::move(root)), random_(static_cast<uint32_t>(number)) {}
    ~User() {
        for (const auto& [node, listener] : listeners_) node->removeListener(listener);
    }

    void act() {
        static constexpr Operation kOperations[] = {
            &User::setNumber, &User::setText,  &User::typeText,   &User::read,        &User::readDefault,
            &User::metadata,  &User::defaults, &User::lookAround, &User::addListener, &User::removeListener,
            &User::lockOne,   &User::lockTwo,  &User::makeChild,
        };
        const PropertyNodePtr node = root_->getNode(kPaths[below(std::size(kPaths))], true);
        (this->*kOperations[below(std::size(kOperations))])(*node);
    }

  private:
    using Operation = void (User::*)(PropertyNode&);

    size_t below(size_t count) { return random_() % count; }
    int number() { return static_cast<int>(below(100)); }

    void setNumber(PropertyNode& node) { node.set(number()); }
    void setText(PropertyNode& node) { node.set(std::to_string(number())); }
    void typeText(PropertyNode& node) {
        std::string error;
        EXPECT_TRUE(node.setFromText(std::to_string(number()), &error)) << error;
    }
    void read(PropertyNode& node) {
        if (node.value().empty()) return;
        EXPECT_LT(node.get<int>(), 100);
        EXPECT_LT(node.get<float>(), 100);
        EXPECT_LE(node.get<std::string>().size(), 2u);
    }
    void readDefault(PropertyNode& node) {
        long value = -1;
        node.get(value, 7L);
        EXPECT_GE(value, 0);
    }
    void metadata(PropertyNode& node) {
        node.setMeta("help", std::to_string(number()));
        std::string help;
        EXPECT_TRUE(node.getMeta("help", help));
        EXPECT_TRUE(node.findMeta("help", help));
        EXPECT_TRUE(node.hasMeta("help"));
        EXPECT_FALSE(node.hasMeta("nothing"));
    }
    void defaults(PropertyNode& node) {
        node.setDefaultValue(node.value());
        node.defaultValue();
    }
    void lookAround(PropertyNode& node) {
        EXPECT_TRUE(root_->exists(node.getFullName()));
        for (const PropertyNodePtr& child : node.children()) EXPECT_FALSE(child->name().empty());
    }
    void addListener(PropertyNode& node) {
        const PropertyNodePtr kept = node.shared_from_this();
        const uint64_t id = node.addListener([](PropertyNode& changed, const PropertyChangeInfo& info) {
            EXPECT_GT(info.counter, 0u);
            changed.value();
        });
        listeners_.emplace_back(kept, id);
    }
    void removeListener(PropertyNode&) {
        if (listeners_.empty()) return;
        listeners_.back().first->removeListener(listeners_.back().second);
        listeners_.pop_back();
    }
    void lockOne(PropertyNode& node) {
        PropertyNodeData::SharedDataLock lock(&node, nullptr);
        const uint64_t counter = ++lock->change_counter;
        node.fireChangedOnData(lock, {PropertyChangeInfo::kValue, "", lock->value, counter});
    }
    // Two nodes at once, in the order of their full names.
    void lockTwo(PropertyNode&) {
        const PropertyNodePtr first = root_->getNode("a", true);
        const PropertyNodePtr second = root_->getNode("d", true);
        PropertyNodeData::SharedDataLock outer(first.get(), nullptr);
        const PropertyNodeData::SharedDataLock inner(second.get(), &outer);
        EXPECT_GE(outer->change_counter + inner->change_counter, 0u);
    }
    void makeChild(PropertyNode& node) { node.getNode("child" + std::to_string(number()), true)->set(1); }

    PropertyNodePtr root_;
    std::mt19937 random_;
    std::vector<std::pair<PropertyNodePtr, uint64_t>> listeners_;
};

TEST(ThreadsTree, EveryOperationAtOnce) {
    const test::ScopedAssertionCapture assertions;
    const PropertyNodePtr root = PropertyNode::createRoot();
    std::vector<std::unique_ptr<test::ChangeRecorder>> recorders;
    for (const char* path : kPaths)
        recorders.push_back(std::make_unique<test::ChangeRecorder>(*root->getNode(path, true)));
    test::together(kThreads, [&](int t) {
        User user(root, t);
        for (int i = 0; i < kActions; ++i) user.act();
    });
    for (const auto& recorder : recorders) {
        const test::Counters seen = recorder->counters();
        EXPECT_GT(seen.size(), 0u);
        for (size_t i = 0; i < seen.size(); ++i) ASSERT_EQ(seen[i], i + 1);
    }
    EXPECT_EQ(assertions.texts(), std::vector<std::string>());
}

TEST(ThreadsTree, NodesAreReadWhileTheirTreeIsReleased) {
    for (int round = 0; round < 50; ++round) {
        PropertyNodePtr root = PropertyNode::createRoot();
        std::vector<PropertyNodePtr> held;
        for (int t = 0; t < kThreads; ++t) held.push_back(root->getNode("a/" + std::to_string(t), true));
        root.reset();
        test::together(kThreads, [&](int t) {
            PropertyNodePtr& node = held[size_t(t)];
            node->set(t);
            EXPECT_EQ(node->getFullName(), "a/" + std::to_string(t));
            EXPECT_EQ(node->get<int>(), t);
            node.reset();
        });
    }
}

}  // namespace
}  // namespace quill
