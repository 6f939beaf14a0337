// Named values beside the value.
#include <gtest/gtest.h>

#include "tests/common/property_node/change_recorder.h"
#include "tests/support/log_capture.h"

namespace quill {
namespace {

using test::ChangeRecorder;
using test::Changes;

class Metadata : public testing::Test {
  protected:
    const PropertyNodePtr node_ = PropertyNode::createRoot();
};

TEST_F(Metadata, ANewEntryNotifiesWithItsNameAndTheNodesCounter) {
    node_->set(1);
    const ChangeRecorder seen(*node_);
    EXPECT_EQ(node_->setMeta<std::string>("help", "text"), 2u);
    EXPECT_EQ(node_->set(2), 3u);
    EXPECT_EQ(seen.changes(), (Changes{{3, "help", "string", "text", 2}, {2, "", "int32", "2", 3}}));
}

TEST_F(Metadata, AnEqualEntryIsNoChange) {
    node_->setMeta("se_diag", 5);
    const ChangeRecorder seen(*node_);
    EXPECT_EQ(node_->setMeta("se_diag", 5), 0u);
    EXPECT_TRUE(seen.changes().empty());
}

TEST_F(Metadata, AnotherTypeIsAChange) {
    node_->setMeta("se_diag", 5);
    EXPECT_EQ(node_->setMeta("se_diag", 5l), 2u);
}

TEST_F(Metadata, ReadsAnEntryAndConvertsIt) {
    node_->setMeta("se_diag", 5l);
    int number = 0;
    EXPECT_TRUE(node_->getMeta("se_diag", number));
    EXPECT_EQ(number, 5);
    std::string text;
    EXPECT_TRUE(node_->getMeta("se_diag", text));
    EXPECT_EQ(text, "5");
}

TEST_F(Metadata, ThatCannotConvertAssertsAndCountsAsRead) {
    const test::ScopedAssertionCapture assertions;
    node_->setMeta<std::string>("se_diag", "abc");
    int number = 9;
    EXPECT_TRUE(node_->getMeta("se_diag", number));
    EXPECT_EQ(number, 0);
    EXPECT_EQ(assertions.texts(), std::vector<std::string>{"Assertion failed: Failed conversion from abc."});
}

TEST_F(Metadata, AnUnknownNameIsNotThereAfterAskingEither) {
    int number = 9;
    EXPECT_FALSE(node_->getMeta("unknown", number));
    EXPECT_EQ(number, 9);
    EXPECT_FALSE(node_->hasMeta("unknown"));
}

TEST_F(Metadata, AskingLeavesAnEmptyEntryWithoutAChange) {
    const ChangeRecorder seen(*node_);
    int number = 0;
    node_->getMeta("unknown", number);
    const PropertyNodeData::SharedDataLock lock(node_.get(), nullptr);
    ASSERT_NE(lock->metadata, nullptr);
    EXPECT_EQ(lock->metadata->count("unknown"), 1u);
    EXPECT_EQ(lock->change_counter, 0u);
    EXPECT_TRUE(seen.changes().empty());
}

TEST_F(Metadata, AnEntryThatAskingLeftIsFilledAsAChange) {
    int number = 0;
    node_->getMeta("asked", number);
    const ChangeRecorder seen(*node_);
    EXPECT_EQ(node_->setMeta("asked", 0), 1u);
    EXPECT_EQ(seen.changes(), (Changes{{3, "asked", "int32", "0", 1}}));
    EXPECT_TRUE(node_->hasMeta("asked"));
}

TEST_F(Metadata, HasMetaCreatesNothing) {
    EXPECT_FALSE(node_->hasMeta("unknown"));
    const PropertyNodeData::SharedDataLock lock(node_.get(), nullptr);
    EXPECT_EQ(lock->metadata, nullptr);
}

TEST_F(Metadata, HasMetaSeesAnEntryWithAValue) {
    node_->setMeta("read_only", false);
    EXPECT_TRUE(node_->hasMeta("read_only"));
    EXPECT_FALSE(node_->hasMeta("read_onl"));
}

TEST_F(Metadata, FindMetaReadsAnEntryAsGetMetaDoes) {
    node_->setMeta<std::string>("mark", "12 and more");
    int number = 0;
    EXPECT_TRUE(node_->findMeta("mark", number));
    EXPECT_EQ(number, 12);
}

TEST_F(Metadata, FindMetaCreatesNothing) {
    int number = 9;
    EXPECT_FALSE(node_->findMeta("unknown", number));
    EXPECT_EQ(number, 9);
    const PropertyNodeData::SharedDataLock lock(node_.get(), nullptr);
    EXPECT_EQ(lock->metadata, nullptr);
}

TEST_F(Metadata, FindMetaPassesOverAnEntryThatAskingLeft) {
    int number = 9;
    node_->getMeta("asked", number);
    EXPECT_FALSE(node_->findMeta("asked", number));
    EXPECT_EQ(number, 9);
}

TEST_F(Metadata, DoesNotTouchTheValue) {
    node_->setMeta("help", 1);
    EXPECT_TRUE(node_->value().empty());
}

TEST_F(Metadata, EntriesAreOrderedByTheBytesOfTheirNames) {
    for (const char* name : {"b", "\xc3\xa4", "B", "a"}) node_->setMeta(name, 1);
    const PropertyNodeData::SharedDataLock lock(node_.get(), nullptr);
    std::vector<std::string> names;
    for (const auto& [name, value] : *lock->metadata) names.push_back(name);
    EXPECT_EQ(names, (std::vector<std::string>{"B", "a", "b", "\xc3\xa4"}));
}

}  // namespace
}  // namespace quill
