// Reading with a default, which fills a node that has no value.
#include <gtest/gtest.h>

#include "tests/common/property_node/change_recorder.h"
#include "tests/support/log_capture.h"

namespace quill {
namespace {

using test::ChangeRecorder;
using test::Changes;

class GetWithDefault : public testing::Test {
  protected:
    const PropertyNodePtr node_ = PropertyNode::createRoot();
    const test::ScopedAssertionCapture assertions_;
};

TEST_F(GetWithDefault, StoresTheDefaultAndNotifies) {
    const ChangeRecorder seen(*node_);
    bool value = false;
    node_->get<bool>(value, true);
    EXPECT_TRUE(value);
    EXPECT_EQ(seen.changes(), (Changes{{2, "", "bool", "1", 1}}));
    EXPECT_TRUE(node_->get<bool>());
    EXPECT_TRUE(assertions_.records().empty());
}

TEST_F(GetWithDefault, LeavesAValueThatIsThere) {
    node_->set(7);
    const ChangeRecorder seen(*node_);
    int value = 0;
    node_->get<int>(value, 5);
    EXPECT_EQ(value, 7);
    EXPECT_TRUE(seen.changes().empty());
}

TEST_F(GetWithDefault, ConvertsAValueOfAnotherType) {
    node_->set<std::string>("1");
    bool value = false;
    node_->get<bool>(value, false);
    EXPECT_TRUE(value);
    EXPECT_STREQ(node_->value().typeName(), "string");
}

TEST_F(GetWithDefault, ThatCannotConvertAssertsAndDoesNotUseTheDefault) {
    node_->set<std::string>("abc");
    int value = 9;
    node_->get<int>(value, 5);
    EXPECT_EQ(value, 0);
    EXPECT_EQ(assertions_.texts(), std::vector<std::string>{"Assertion failed: Failed conversion from abc."});
}

TEST_F(GetWithDefault, WorksForEveryType) {
    std::string text;
    float number = 0;
    long large = 0;
    node_->getNode("text", true)->get<std::string>(text, "default");
    node_->getNode("number", true)->get<float>(number, 1.5f);
    node_->getNode("large", true)->get<long>(large, 1l << 40);
    EXPECT_EQ(text, "default");
    EXPECT_EQ(number, 1.5f);
    EXPECT_EQ(large, 1l << 40);
}

TEST_F(GetWithDefault, LeavesTheDefaultOfTheNode) {
    int out = 0;
    node_->get<int>(out, 5);
    EXPECT_TRUE(node_->defaultValue().empty());
}

}  // namespace
}  // namespace quill
