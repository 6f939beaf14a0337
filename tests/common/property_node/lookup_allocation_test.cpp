// Calls that do not allocate, and calls that release memory.
#include <gtest/gtest.h>

#include <memory>

#include "common/property_node.h"
#include "tests/common/property_node/allocation_count.h"

namespace quill {
namespace {

using test::allocationsOf;

class Allocations : public testing::Test {
  protected:
    // Three components, too long for the buffer inside a string.
    const std::string path_ = "diags/a level with a long name/a diagnostic with a long name";
    const std::string missing_ = "diags/a level with a long name/no diagnostic of such a name";
    const PropertyNodePtr root_ = PropertyNode::createRoot();
    const PropertyNodePtr node_ = root_->getNode(path_, true);
};

TEST_F(Allocations, AreCounted) {
    std::unique_ptr<int> number;
    EXPECT_EQ(allocationsOf([&] { number = std::make_unique<int>(1); }), 1u);
    EXPECT_EQ(*number, 1);
    EXPECT_GE(allocationsOf([&] { root_->getNode("new", true); }), 1u);
    EXPECT_GE(allocationsOf([] { PropertyValue().set<std::string>("text"); }), 1u);
}

TEST_F(Allocations, FindingANodeMakesNone) {
    EXPECT_EQ(allocationsOf([&] {
                  root_->getNode(path_, false);
                  root_->getNode(path_, true);
              }),
              0u);
}

TEST_F(Allocations, FindingNoNodeMakesNone) {
    EXPECT_EQ(allocationsOf([&] { root_->getNode(missing_, false); }), 0u);
}

TEST_F(Allocations, AskingWhetherANodeExistsMakesNone) {
    EXPECT_EQ(allocationsOf([&] {
                  root_->exists(path_);
                  root_->exists(missing_);
              }),
              0u);
}

TEST_F(Allocations, SettingAScalarWithoutListenersMakesNone) {
    const auto set_all_types = [&](int number) {
        node_->set(number);
        node_->set(long{number});
        node_->set(static_cast<float>(number));
        node_->set(number % 2 == 0);
    };
    set_all_types(1);  // each type has its operations from now on
    EXPECT_EQ(allocationsOf([&] { set_all_types(2); }), 0u);
}

TEST_F(Allocations, SettingAnUnchangedScalarMakesNone) {
    const auto set_twice = [&](auto value) {
        node_->set(value);
        EXPECT_EQ(allocationsOf([&] { EXPECT_EQ(node_->set(value), 0u); }), 0u);
    };
    set_twice(1);
    set_twice(1l);
    set_twice(1.0f);
    set_twice(true);
}

TEST_F(Allocations, SettingAnUnchangedScalarWithAListenerMakesNone) {
    node_->addListener([](PropertyNode&, const PropertyChangeInfo&) {});
    node_->set(1);
    EXPECT_EQ(allocationsOf([&] { node_->set(1); }), 0u);
}

TEST_F(Allocations, ReadingAScalarOfItsOwnTypeMakesNone) {
    node_->set(1);
    node_->setMeta("mark", 1);
    const std::string mark = "mark";
    EXPECT_EQ(allocationsOf([&] {
                  int value = node_->get<int>();
                  node_->getMeta(mark, value);
                  node_->findMeta(mark, value);
                  node_->hasMeta(mark);
                  node_->setMeta(mark, value);
              }),
              0u);
}

TEST_F(Allocations, ABoolAfterAStringReleasesTheHeapBlock) {
    PropertyValue value;
    value.set(true);
    value.set<std::string>("a");  // its characters are in the string object
    EXPECT_EQ(test::releasesOf([&] { value.set(true); }), 1u);
}

TEST_F(Allocations, ClearingAStringReleasesTheHeapBlock) {
    PropertyValue value;
    value.set<std::string>("a");
    EXPECT_EQ(test::releasesOf([&] { value.clear(); }), 1u);
}

}  // namespace
}  // namespace quill
