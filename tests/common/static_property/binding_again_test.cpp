// A second pass binds the new properties and leaves those alone that are bound to their node already.
#include <gtest/gtest.h>

#include "common/properties.h"
#include "tests/common/property_node/change_recorder.h"
#include "tests/support/log_capture.h"

namespace quill {
namespace {

using test::ChangeRecorder;
using test::Changes;

class BoundAgain : public testing::Test {
  protected:
    BoundAgain() {
        initStaticProperties(root_);
        node_ = property_.node();
    }

    const PropertyNodePtr root_ = PropertyNode::createRoot();
    const StaticProperty<int> property_ = StaticProperty<int>("a/b", 1, "source.cpp").setReadOnly(true);
    PropertyNodePtr node_;
};

TEST_F(BoundAgain, SendsNoNotification) {
    const ChangeRecorder seen(*node_);
    initStaticProperties(root_);
    EXPECT_TRUE(seen.changes().empty());
}

TEST_F(BoundAgain, KeepsTheMetadataThatOthersSet) {
    node_->setMeta<std::string>("help", "text");
    node_->setMeta("read_only", false);
    node_->setMeta<std::string>("file_name", "moved.cpp");
    initStaticProperties(root_);
    std::string help;
    std::string file;
    bool read_only = true;
    EXPECT_TRUE(node_->findMeta("help", help) && node_->findMeta("file_name", file));
    EXPECT_TRUE(node_->findMeta("read_only", read_only));
    EXPECT_EQ(help, "text");
    EXPECT_EQ(file, "moved.cpp");
    EXPECT_FALSE(read_only);
}

TEST_F(BoundAgain, KeepsValueDefaultAndHandle) {
    PropertyValue other_default;
    other_default.set(7);
    node_->set(5);
    node_->setDefaultValue(other_default);
    const void* const wrapper = property_.data()->wrapper.get();
    initStaticProperties(root_);
    EXPECT_EQ(property_.get(), 5);
    EXPECT_EQ(node_->defaultValue(), other_default);
    EXPECT_EQ(property_.data()->wrapper.get(), wrapper);
}

TEST_F(BoundAgain, DoesNotCallTheCallbackAgain) {
    int calls = 0;
    property_.data()->on_initialized = std::make_shared<std::function<void(const PropertyNodePtr&)>>(
        [&](const PropertyNodePtr&) { ++calls; });
    initStaticProperties(root_);
    EXPECT_EQ(calls, 0);
    initStaticProperties(PropertyNode::createRoot());
    EXPECT_EQ(calls, 1);
}

TEST_F(BoundAgain, OfAnEmptyPathAssertsOnce) {
    const StaticProperty<int> no_path("", 1, nullptr);
    const test::ScopedAssertionCapture assertions;
    initStaticProperties(root_);
    initStaticProperties(root_);
    EXPECT_EQ(assertions.records().size(), 1u);
}

TEST_F(BoundAgain, BindsWhatIsNew) {
    const StaticProperty<int> late("late", 2, nullptr);
    initStaticProperties(root_);
    EXPECT_EQ(late.node(), root_->getNode("late", false));
}

TEST_F(BoundAgain, BelowAnotherRootBindsAnew) {
    const PropertyNodePtr other = PropertyNode::createRoot();
    const PropertyNodePtr node = other->getNode("a/b", true);
    node->setMeta<std::string>("help", "text");
    const ChangeRecorder seen(*node);
    initStaticProperties(other);
    EXPECT_EQ(property_.node(), node);
    EXPECT_EQ(seen.changes(), (Changes{{3, "*", "", "", 2},
                                       {2, "", "int32", "1", 3},
                                       {3, "file_name", "string", "source.cpp", 4}}));
}

TEST_F(BoundAgain, BelowTheFirstRootAfterAnotherBindsAnew) {
    initStaticProperties(PropertyNode::createRoot());
    node_->setMeta<std::string>("help", "text");
    initStaticProperties(root_);
    EXPECT_EQ(property_.node(), node_);
    EXPECT_FALSE(node_->hasMeta("help"));
}

}  // namespace
}  // namespace quill
