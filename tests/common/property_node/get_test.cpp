// Reading a value.
#include <gtest/gtest.h>

#include "common/property_node.h"
#include "tests/support/log_capture.h"

namespace quill {
namespace {

class Get : public testing::Test {
  protected:
    const PropertyNodePtr node_ = PropertyNode::createRoot();
    const test::ScopedAssertionCapture assertions_;
};

TEST_F(Get, OfANodeWithoutAValueAssertsAndGivesTheTypesDefault) {
    EXPECT_EQ(node_->get<int>(), 0);
    EXPECT_EQ(node_->get<long>(), 0l);
    EXPECT_EQ(node_->get<float>(), 0.0f);
    EXPECT_EQ(node_->get<bool>(), false);
    EXPECT_EQ(node_->get<std::string>(), "");
    EXPECT_EQ(assertions_.texts(), std::vector<std::string>(5, "Assertion failed: d->value.get<T>(temp)"));
}

TEST_F(Get, OfANodeWithoutAValueCarriesItsIdentity) {
    node_->get<int>();
    ASSERT_EQ(assertions_.records().size(), 1u);
    const AssertionRecord record = assertions_.records()[0];
    EXPECT_STREQ(record.file, "common/property_node");
    EXPECT_EQ(record.line, 569);
    EXPECT_NE(std::string(record.function).find("T quill::PropertyNode::get()"), std::string::npos)
        << record.function;
}

TEST_F(Get, OfANodeWithoutAValueLeavesItWithout) {
    node_->get<int>();
    EXPECT_TRUE(node_->value().empty());
    EXPECT_EQ(node_->set(0), 1u);
}

TEST_F(Get, AsAnotherTypeGoesThroughText) {
    node_->set<std::string>("12");
    EXPECT_EQ(node_->get<int>(), 12);
    EXPECT_EQ(node_->get<long>(), 12l);
    EXPECT_EQ(node_->get<float>(), 12.0f);
    EXPECT_TRUE(assertions_.records().empty());
}

TEST_F(Get, ThatCannotConvertAssertsAndGivesWhatTheExtractionLeft) {
    node_->set<std::string>("abc");
    EXPECT_EQ(node_->get<int>(), 0);
    node_->set(1l << 40);
    EXPECT_EQ(node_->get<int>(), 2147483647);
    EXPECT_EQ(assertions_.texts(), (std::vector<std::string>{
                                       "Assertion failed: Failed conversion from abc.",
                                       "Assertion failed: Failed conversion from 1099511627776.",
                                   }));
}

TEST_F(Get, ThatCannotConvertCarriesItsIdentity) {
    node_->set<std::string>("abc");
    node_->get<bool>();
    ASSERT_EQ(assertions_.records().size(), 1u);
    EXPECT_STREQ(assertions_.records()[0].file, "common/property_value");
    EXPECT_EQ(assertions_.records()[0].line, 39);
}

TEST_F(Get, DoesNotChangeTheTypeOfTheNode) {
    node_->set<std::string>("12");
    node_->get<int>();
    EXPECT_STREQ(node_->value().typeName(), "string");
}

TEST_F(Get, ValueIsACopy) {
    node_->set(1);
    PropertyValue copy = node_->value();
    copy.set(2);
    EXPECT_EQ(node_->get<int>(), 1);
}

}  // namespace
}  // namespace quill
