// Values that a user types.
#include <gtest/gtest.h>

#include "tests/common/property_node/change_recorder.h"
#include "tests/support/log_capture.h"

namespace quill {
namespace {

using test::ChangeRecorder;
using test::Changes;

class SetFromText : public testing::Test {
  protected:
    const PropertyNodePtr root_ = PropertyNode::createRoot();
    const PropertyNodePtr node_ = root_->getNode("diags/basic/x", true);

    // The error text of a refused value; the node must be unchanged.
    std::string refusal(const std::string& text) {
        const PropertyValue before = node_->value();
        const ChangeRecorder seen(*node_);
        std::string error;
        EXPECT_FALSE(node_->setFromText(text, &error));
        EXPECT_FALSE(node_->setFromText(text, nullptr));
        EXPECT_EQ(node_->value(), before);
        EXPECT_TRUE(seen.changes().empty());
        node_->removeListener(seen.id());
        return error;
    }
    std::string accepted(const std::string& text) {
        std::string error = "untouched";
        EXPECT_TRUE(node_->setFromText(text, &error)) << error;
        EXPECT_EQ(error, "untouched");
        return std::string(node_->value().typeName()) + " " + node_->value().toString();
    }
};

TEST_F(SetFromText, KeepsTheTypeOfTheNode) {
    node_->set(1);
    EXPECT_EQ(accepted(" 42 "), "int32 42");
    node_->set(1l);
    EXPECT_EQ(accepted("-42"), "int64 -42");
    node_->set(true);
    EXPECT_EQ(accepted("0"), "bool 0");
    node_->set(1.0f);
    EXPECT_EQ(accepted("-nan"), "float -nan");
    node_->set<std::string>("a");
    EXPECT_EQ(accepted(" 42 "), "string  42 ");
}

TEST_F(SetFromText, GivesANodeWithoutAValueAString) {
    EXPECT_EQ(accepted("42"), "string 42");
}

TEST_F(SetFromText, NotifiesOnceAsAValueChange) {
    node_->set(1);
    const ChangeRecorder seen(*node_);
    accepted("42");
    EXPECT_EQ(seen.changes(), (Changes{{2, "", "int32", "42", 2}}));
}

TEST_F(SetFromText, TheSameValueAgainIsFineAndNoChange) {
    node_->set(42);
    const ChangeRecorder seen(*node_);
    EXPECT_EQ(accepted("42"), "int32 42");
    EXPECT_TRUE(seen.changes().empty());
}

TEST_F(SetFromText, RefusesAReadOnlyNode) {
    node_->set(1);
    node_->setMeta("read_only", true);
    EXPECT_EQ(refusal("2"), "\"diags/basic/x\" is read-only");
    EXPECT_EQ(refusal("1"), "\"diags/basic/x\" is read-only");
}

TEST_F(SetFromText, RefusesAReadOnlyNodeWithoutAValue) {
    node_->setMeta("read_only", true);
    EXPECT_EQ(refusal("2"), "\"diags/basic/x\" is read-only");
}

TEST_F(SetFromText, ReadsReadOnlyOfAnyTypeAsABool) {
    node_->setMeta("read_only", 1);
    EXPECT_EQ(refusal("2"), "\"diags/basic/x\" is read-only");
    node_->setMeta("read_only", 1.0f);
    EXPECT_EQ(refusal("2"), "\"diags/basic/x\" is read-only");
    node_->setMeta<std::string>("read_only", " 1 ");
    EXPECT_EQ(refusal("2"), "\"diags/basic/x\" is read-only");
    node_->setMeta<std::string>("read_only", "0");
    EXPECT_EQ(accepted("2"), "string 2");
}

TEST_F(SetFromText, ReportsAReadOnlyThatIsNoBool) {
    const test::ScopedAssertionCapture assertions;
    node_->setMeta<std::string>("read_only", "yes");
    bool as_metadata = false;
    EXPECT_TRUE(node_->getMeta("read_only", as_metadata));
    EXPECT_EQ(node_->setFromText("2", nullptr), !as_metadata);
    EXPECT_EQ(assertions.texts(),
              std::vector<std::string>(2, "Assertion failed: Failed conversion from yes."));
}

TEST_F(SetFromText, AcceptsANodeWhoseReadOnlyIsFalseOrEmpty) {
    bool ignored = false;
    node_->getMeta("read_only", ignored);
    EXPECT_EQ(accepted("a"), "string a");
    node_->setMeta("read_only", false);
    EXPECT_EQ(accepted("b"), "string b");
}

TEST_F(SetFromText, RefusesATextThatTheTypeCannotHoldAndSaysWhatItTakes) {
    node_->set(1);
    EXPECT_EQ(refusal("abc"),
              "\"diags/basic/x\" takes a whole number from -2147483648 to 2147483647, not \"abc\"");
    node_->set(1l);
    EXPECT_EQ(refusal("1.5"), "\"diags/basic/x\" takes a whole number of at most 64 bits, not \"1.5\"");
    node_->set(true);
    EXPECT_EQ(refusal("true"), "\"diags/basic/x\" takes 0 or 1, not \"true\"");
    node_->set(1.0f);
    EXPECT_EQ(refusal("loud"), "\"diags/basic/x\" takes a number, nan, -nan, inf or -inf, not \"loud\"");
}

TEST_F(SetFromText, RefusesATextWithARemainder) {
    node_->set(1);
    for (const char* text : {"12abc", "1 2", "2 - Narrow", "1.0"}) EXPECT_NE(refusal(text), "");
}

TEST_F(SetFromText, RefusesAnEmptyTextAndOneOutOfRange) {
    node_->set(1);
    for (const char* text : {"", " ", "2147483648"}) EXPECT_NE(refusal(text), "");
}

TEST_F(SetFromText, CreatesNoMetadata) {
    node_->setFromText("a", nullptr);
    const PropertyNodeData::SharedDataLock lock(node_.get(), nullptr);
    EXPECT_EQ(lock->metadata, nullptr);
}

}  // namespace
}  // namespace quill
