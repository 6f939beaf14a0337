// The lifetimes of a node, its listeners and what they captured.
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <utility>

#include "tests/common/property_node/change_recorder.h"

namespace quill {
namespace {

// Runs an action when it is destroyed.
struct AtDestruction {
    explicit AtDestruction(std::function<void()> a) : action(std::move(a)) {}
    ~AtDestruction() { action(); }
    std::function<void()> action;
};

PropertyListener holding(std::function<void()> at_destruction) {
    return [held = std::make_shared<AtDestruction>(std::move(at_destruction))](PropertyNode&,
                                                                               const PropertyChangeInfo&) {};
}

struct Accessor {
    const char* name;
    void (*change)(PropertyNode&);
};

constexpr Accessor kAccessors[] = {
    {"Set", [](PropertyNode& node) { EXPECT_EQ(node.set(1), 1u); }},
    {"SetMeta", [](PropertyNode& node) { EXPECT_EQ(node.setMeta("help", 1), 1u); }},
    {"SetFromText", [](PropertyNode& node) { EXPECT_TRUE(node.setFromText("text", nullptr)); }},
    {"GetWithDefault",
     [](PropertyNode& node) {
         int out = 0;
         node.get<int>(out, 5);
         EXPECT_EQ(out, 5);
     }},
    {"SetDefaultValue",
     [](PropertyNode& node) {
         PropertyValue value;
         value.set(1);
         node.setDefaultValue(value);
     }},
};

class LastReference : public testing::TestWithParam<Accessor> {};

TEST_P(LastReference, MayBeDroppedByAListenerOfTheNode) {
    PropertyNodePtr node = PropertyNode::createRoot();
    const std::weak_ptr<PropertyNode> observed = node;
    bool alive = false;
    node->addListener([&](PropertyNode&, const PropertyChangeInfo&) {
        node.reset();
        alive = !observed.expired();
    });
    GetParam().change(*node);
    EXPECT_TRUE(alive);
    EXPECT_TRUE(observed.expired());
}

INSTANTIATE_TEST_SUITE_P(EachAccessor, LastReference, testing::ValuesIn(kAccessors),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(ListenerLifetime, ARemovedListenerMayHoldTheLastReferenceToItsNode) {
    PropertyNodePtr node = PropertyNode::createRoot();
    const std::weak_ptr<PropertyNode> observed = node;
    PropertyNode& same = *node;
    const uint64_t id = node->addListener([node](PropertyNode&, const PropertyChangeInfo&) {});
    node.reset();
    same.removeListener(id);
    EXPECT_TRUE(observed.expired());
}

TEST(ListenerLifetime, AListenerAddedByADestructorOfACaptureSeesLaterChangesOnly) {
    const PropertyNodePtr node = PropertyNode::createRoot();
    int told = 0;
    uint64_t own = 0;
    auto held = std::make_shared<AtDestruction>(
        [&] { node->addListener([&](PropertyNode&, const PropertyChangeInfo&) { ++told; }); });
    own = node->addListener([&own, held = std::move(held)](PropertyNode& changed, const PropertyChangeInfo&) {
        changed.removeListener(own);
    });
    const test::ChangeRecorder behind(*node);
    node->set(1);
    EXPECT_EQ(told, 0);
    EXPECT_EQ(behind.counters(), test::Counters{1});
    node->set(2);
    EXPECT_EQ(told, 1);
}

TEST(ListenerLifetime, ACaptureMayUseTheListenersOfANodeThatIsBeingDestroyed) {
    PropertyNodePtr node = PropertyNode::createRoot();
    PropertyNode& same = *node;
    int added_destroyed = 0;
    int told = 0;
    uint64_t other = 0;
    node->addListener(holding([&] {
        same.addListener(holding([&] {
            same.addListener(holding([&] { ++added_destroyed; }));
            ++added_destroyed;
        }));
        same.removeListener(other);
        same.set(1);
    }));
    other = node->addListener([&](PropertyNode&, const PropertyChangeInfo&) { ++told; });
    node.reset();
    EXPECT_EQ(added_destroyed, 2);
    EXPECT_EQ(told, 0);
}

TEST(ListenerLifetime, AnEmptyFunctionIsRefused) {
    const PropertyNodePtr node = PropertyNode::createRoot();
    EXPECT_EQ(node->addListener({}), 0u);
    EXPECT_EQ(node->addListener(nullptr), 0u);
    EXPECT_EQ(node->set(1), 1u);
    node->removeListener(0);
}

}  // namespace
}  // namespace quill
