// The default of a node.
#include <gtest/gtest.h>

#include "tests/common/property_node/change_recorder.h"

namespace quill {
namespace {

using test::ChangeRecorder;
using test::Changes;

PropertyValue number(int value) {
    PropertyValue result;
    result.set(value);
    return result;
}

TEST(DefaultValue, BecomesTheValueOfANodeWithoutOneAsOneChange) {
    const PropertyNodePtr node = PropertyNode::createRoot();
    const ChangeRecorder seen(*node);
    node->setDefaultValue(number(3));
    EXPECT_EQ(node->get<int>(), 3);
    EXPECT_EQ(seen.changes(), (Changes{{2, "", "int32", "3", 1}}));
}

TEST(DefaultValue, LeavesAValueThatWasSetBefore) {
    const PropertyNodePtr node = PropertyNode::createRoot();
    node->set<std::string>("set");
    const ChangeRecorder seen(*node);
    node->setDefaultValue(number(3));
    EXPECT_EQ(node->get<std::string>(), "set");
    EXPECT_TRUE(seen.changes().empty());
}

TEST(DefaultValue, IsKeptEitherWay) {
    const PropertyNodePtr node = PropertyNode::createRoot();
    EXPECT_TRUE(node->defaultValue().empty());
    node->setDefaultValue(number(3));
    node->set(4);
    EXPECT_EQ(node->defaultValue(), number(3));
    node->setDefaultValue(number(5));
    EXPECT_EQ(node->defaultValue(), number(5));
    EXPECT_EQ(node->get<int>(), 4);
}

TEST(DefaultValue, GivenTwiceChangesNothing) {
    const PropertyNodePtr node = PropertyNode::createRoot();
    node->setDefaultValue(number(3));
    const ChangeRecorder seen(*node);
    node->setDefaultValue(number(3));
    EXPECT_TRUE(seen.changes().empty());
}

TEST(DefaultValue, ThatIsEmptyGivesNoValue) {
    const PropertyNodePtr node = PropertyNode::createRoot();
    const ChangeRecorder seen(*node);
    node->setDefaultValue(PropertyValue());
    EXPECT_TRUE(node->value().empty());
    EXPECT_TRUE(seen.changes().empty());
}

}  // namespace
}  // namespace quill
