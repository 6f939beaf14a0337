// Binding static properties to their nodes.
#include <gtest/gtest.h>

#include "common/properties.h"
#include "tests/support/log_capture.h"

namespace quill {
namespace {

class Binding : public testing::Test {
  protected:
    const PropertyNodePtr root_ = PropertyNode::createRoot();
};

TEST_F(Binding, MakesTheNodeWithTheDefault) {
    const StaticProperty<std::string> property("a/b", "default", nullptr);
    initStaticProperties(root_);
    ASSERT_TRUE(root_->exists("a/b"));
    EXPECT_EQ(property.node(), root_->getNode("a/b", false));
    EXPECT_EQ(property.get(), "default");
    EXPECT_EQ(property.node()->defaultValue().toString(), "default");
}

TEST_F(Binding, WorksForEveryType) {
    const StaticProperty<float> f("f", 1.5f, nullptr);
    const StaticProperty<long> l("l", 1l << 40, nullptr);
    const StaticProperty<bool> b("b", true, nullptr);
    const StaticProperty<int> i("i", -3, nullptr);
    const StaticProperty<std::string> s("s", "text", nullptr);
    initStaticProperties(root_);
    EXPECT_EQ(f.get(), 1.5f);
    EXPECT_EQ(l.get(), 1l << 40);
    EXPECT_EQ(b.get(), true);
    EXPECT_EQ(i.get(), -3);
    EXPECT_EQ(s.get(), "text");
}

TEST_F(Binding, LeavesAValueThatIsThere) {
    root_->getNode("a", true)->set<std::string>("configured");
    const StaticProperty<std::string> property("a", "default", nullptr);
    initStaticProperties(root_);
    EXPECT_EQ(property.get(), "configured");
}

TEST_F(Binding, ReadsAValueOfAnotherTypeThroughItsText) {
    root_->getNode("a", true)->set<std::string>("1");
    const StaticProperty<bool> property("a", false, nullptr);
    initStaticProperties(root_);
    EXPECT_TRUE(property.get());
}

TEST_F(Binding, FollowsTheNodeFromThenOn) {
    const StaticProperty<int> property("a", 1, nullptr);
    initStaticProperties(root_);
    root_->getNode("a", false)->set(2);
    EXPECT_EQ(property.get(), 2);
    property.node()->set(3);
    EXPECT_EQ(root_->getNode("a", false)->get<int>(), 3);
}

TEST_F(Binding, ReachesEveryCopy) {
    const StaticProperty<int> property("a", 1, nullptr);
    const StaticProperty<int> copy = property;
    initStaticProperties(root_);
    EXPECT_EQ(copy.node(), property.node());
}

TEST_F(Binding, OfAnEmptyPathAssertsAndGoesOnWithTheRoot) {
    const StaticProperty<int> property("", 1, nullptr);
    const test::ScopedAssertionCapture assertions;
    initStaticProperties(root_);
    EXPECT_EQ(property.node(), root_);
    EXPECT_EQ(property.get(), 1);
    ASSERT_EQ(assertions.records().size(), 1u);
    const AssertionRecord record = assertions.records()[0];
    EXPECT_STREQ(record.file, "common/properties");
    EXPECT_EQ(record.line, 728);
    EXPECT_EQ(record.text, "Assertion failed: Property path cannot be empty string.");
    EXPECT_NE(std::string(record.function).find("Data::initialize("), std::string::npos) << record.function;
}

TEST_F(Binding, CallsTheCallbackLastWithTheNode) {
    const StaticProperty<int> property("a", 1, "file.cpp");
    PropertyNodePtr given;
    bool usable = false;
    property.data()->on_initialized =
        std::make_shared<std::function<void(const PropertyNodePtr&)>>([&](const PropertyNodePtr& node) {
            given = node;
            usable = property.get() == 1 && node->hasMeta("file_name");
        });
    initStaticProperties(root_);
    EXPECT_EQ(given, root_->getNode("a", false));
    EXPECT_TRUE(usable);
}

TEST_F(Binding, HappensInTheOrderOfDeclaration) {
    const StaticProperty<int> first("a", 1, nullptr);
    const StaticProperty<int> second("a", 2, nullptr);
    initStaticProperties(root_);
    EXPECT_EQ(second.get(), 1);
}

TEST_F(Binding, AgainKeepsValuesAndNode) {
    const StaticProperty<int> property("a", 1, "file.cpp");
    initStaticProperties(root_);
    property.node()->set(5);
    const void* const wrapper = property.data()->wrapper.get();
    initStaticProperties(root_);
    EXPECT_EQ(property.get(), 5);
    EXPECT_EQ(property.data()->wrapper.get(), wrapper);
}

TEST_F(Binding, ToAnotherTreeMovesTheProperty) {
    const StaticProperty<int> property("a", 1, nullptr);
    initStaticProperties(root_);
    const PropertyNodePtr other = PropertyNode::createRoot();
    initStaticProperties(other);
    EXPECT_EQ(property.node(), other->getNode("a", false));
}

}  // namespace
}  // namespace quill
