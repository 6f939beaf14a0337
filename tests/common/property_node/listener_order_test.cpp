// The order in which changes that wait are told.
#include <gtest/gtest.h>

#include "tests/common/property_node/change_recorder.h"

namespace quill {
namespace {

TEST(ListenerOrder, ChangesThatOneListenerMakesAreToldInTheOrderOfTheCounter) {
    const PropertyNodePtr node = PropertyNode::createRoot()->getNode("a", true);
    node->addListener([](PropertyNode& changed, const PropertyChangeInfo& info) {
        if (info.counter != 1) return;
        changed.set(2);
        changed.set(3);
        changed.set(4);
    });
    const test::ChangeRecorder recorder(*node);
    node->set(1);
    EXPECT_EQ(recorder.counters(), (test::Counters{1, 2, 3, 4}));
}

}  // namespace
}  // namespace quill
