// The declared metadata replaces the node's metadata, as one change.
#include <gtest/gtest.h>

#include "common/properties.h"
#include "tests/common/property_node/change_recorder.h"

namespace quill {
namespace {

using test::ChangeRecorder;
using test::Changes;

class BindingMetadata : public testing::Test {
  protected:
    const PropertyNodePtr root_ = PropertyNode::createRoot();
    const PropertyNodePtr node_ = root_->getNode("a/b", true);
};

template <class T>
void bindBelow(const StaticProperty<T>& property, const PropertyNodePtr& root) {
    property.data()->initialize(StaticPropertyInitArgs{root});
}

TEST_F(BindingMetadata, IsReadOnlyAndFileNameAfterwards) {
    StaticProperty<std::string> property("a/b", "", "dir/source.cpp");
    bindBelow(property.setReadOnly(true), root_);
    bool read_only = false;
    std::string file;
    EXPECT_TRUE(node_->getMeta("read_only", read_only));
    EXPECT_TRUE(node_->getMeta("file_name", file));
    EXPECT_TRUE(read_only);
    EXPECT_EQ(file, "dir/source.cpp");
}

TEST_F(BindingMetadata, IsNotifiedAsStarWithAnEmptyValueThenTheValueThenTheFileName) {
    StaticProperty<std::string> property("a/b", "x", "source.cpp");
    const ChangeRecorder seen(*node_);
    bindBelow(property.setReadOnly(true), root_);
    EXPECT_EQ(seen.changes(), (Changes{{3, "*", "", "", 1},
                                       {2, "", "string", "x", 2},
                                       {3, "file_name", "string", "source.cpp", 3}}));
}

TEST_F(BindingMetadata, ThatTheNodeHasAlreadySendsNoStar) {
    node_->set<std::string>("x");
    node_->setMeta("read_only", true);
    StaticProperty<std::string> property("a/b", "", nullptr);
    const ChangeRecorder seen(*node_);
    bindBelow(property.setReadOnly(true), root_);
    EXPECT_TRUE(seen.changes().empty());
}

TEST_F(BindingMetadata, OfNothingOnANodeWithNothingSendsNoStarAndMakesTheMap) {
    node_->set(1);
    const StaticProperty<int> property("a/b", 1, nullptr);
    const ChangeRecorder seen(*node_);
    bindBelow(property, root_);
    EXPECT_TRUE(seen.changes().empty());
    const PropertyNodeData::SharedDataLock lock(node_.get(), nullptr);
    EXPECT_NE(lock->metadata, nullptr);
}

TEST_F(BindingMetadata, RemovesEntriesThatWereNotDeclared) {
    node_->setMeta<std::string>("help", "text");
    node_->setMeta("read_only", true);
    StaticProperty<int> property("a/b", 1, nullptr);
    bindBelow(property.setReadOnly(true), root_);
    EXPECT_FALSE(node_->hasMeta("help"));
    EXPECT_TRUE(node_->hasMeta("read_only"));
}

TEST_F(BindingMetadata, RemovesTheEmptyEntriesThatAskingLeaves) {
    int ignored = 0;
    node_->getMeta("asked", ignored);
    node_->set(1);
    const StaticProperty<int> property("a/b", 1, nullptr);
    const ChangeRecorder seen(*node_);
    bindBelow(property, root_);
    EXPECT_EQ(seen.changes(), (Changes{{3, "*", "", "", 2}}));
}

TEST_F(BindingMetadata, OfAnotherValueOrTypeSendsAStar) {
    node_->set(1);
    node_->setMeta("read_only", 1);
    StaticProperty<int> property("a/b", 1, nullptr);
    const ChangeRecorder seen(*node_);
    bindBelow(property.setReadOnly(true), root_);
    EXPECT_EQ(seen.changes(), (Changes{{3, "*", "", "", 3}}));
}

TEST_F(BindingMetadata, UnderAnotherNameSendsAStar) {
    node_->set(1);
    node_->setMeta("writable", true);
    StaticProperty<int> property("a/b", 1, nullptr);
    const ChangeRecorder seen(*node_);
    bindBelow(property.setReadOnly(true), root_);
    EXPECT_EQ(seen.changes(), (Changes{{3, "*", "", "", 3}}));
}

TEST_F(BindingMetadata, IsACopyThatTheNodeMayChange) {
    StaticProperty<int> property("a/b", 1, nullptr);
    bindBelow(property.setReadOnly(true), root_);
    node_->setMeta("read_only", false);
    EXPECT_TRUE(property.data()->pending_metadata->at("read_only").holdsEqual(true));
}

TEST_F(BindingMetadata, WithoutAFileHasNoFileName) {
    bindBelow(StaticProperty<int>("a/b", 1, nullptr), root_);
    EXPECT_FALSE(node_->hasMeta("file_name"));
}

TEST_F(BindingMetadata, MayBeAbsentAltogether) {
    node_->setMeta<std::string>("help", "text");
    const StaticProperty<int> property("a/b", 1, nullptr);
    property.data()->pending_metadata.reset();
    bindBelow(property, root_);
    EXPECT_TRUE(node_->hasMeta("help"));
}

TEST_F(BindingMetadata, ReadOnlyRefusesTypedTextsAndNoSetCalls) {
    StaticProperty<int> property("a/b", 1, nullptr);
    bindBelow(property.setReadOnly(true), root_);
    EXPECT_FALSE(node_->setFromText("2", nullptr));
    EXPECT_NE(node_->set(2), 0u);
}

}  // namespace
}  // namespace quill
