// An engine whose texts are of any bytes and any length, and whose lengths cannot be.
#include <limits>

#include "tests/webrtc_common/diags/bridge.h"

using namespace quill::test;

namespace {

constexpr int kHuge = std::numeric_limits<int>::max();
constexpr int kMostElements = 4'194'304;
constexpr int kMostDiags = 262'144;

const std::string kOddText =
    "a\x1b[2J\x9b"
    "1m\xff b\n";

class OddAnswers : public Bridge {
  protected:
    OddAnswers() { root->getNode("transfer_large_arrays", true)->set<bool>(true); }
};

// What meets a terminal or a log is shown there without them; the tree holds what the engine says.
TEST_F(OddAnswers, ReachTheTreeByteForByte) {
    const int index = engine->add_diag(kOddText.c_str(), kEnum, 1, kReadWrite, 0, kOddText.c_str());
    engine->set_label(index, 0, kOddText.c_str());
    publish();
    EXPECT_EQ("string 0 - " + kOddText, value(kOddText));
    EXPECT_EQ("string " + kOddText, meta("help", kOddText));
    EXPECT_EQ(kOddText, root->getNode("diags/basic", false)->children().at(0)->name());
}

TEST_F(OddAnswers, ReachASinkByteForByte) {
    engine->set_integer(engine->add_diag(kOddText.c_str(), kInt32, 1, kReadWrite, 0, ""), 5);
    EXPECT_EQ((Lines{"diags/basic/" + kOddText, "Updating " + kOddText + " to 5"}),
              recordsOf([&] { publish(); }));
}

TEST_F(OddAnswers, MayBeNamesOfAMegabyte) {
    const std::string name(1'048'576, 'n');
    const int index = add(kInt32, name.c_str());
    engine->set_integer(index, 5);
    publish();
    EXPECT_EQ("int32 5", value(name));
    node(name)->set<int>(7);
    apply();
    EXPECT_EQ(7, engine->integer(index));
}

TEST_F(OddAnswers, OfNegativeLengthAreScalars) {
    engine->set_integer(addArray(kInt32, -5), 5);
    publish();
    EXPECT_EQ("int32 5", value());
    engine->set_length(0, std::numeric_limits<int>::min());
    node()->set<int>(7);
    apply();
    EXPECT_EQ(7, engine->integer(0));
}

TEST_F(OddAnswers, OfTwoMillionElementsArePublishedWhole) {
    constexpr int kElements = 2'000'000;
    engine->set_element(addArray(kInt16, kElements), kElements - 1, 7);
    publish();
    const std::string text = node()->get<std::string>();
    EXPECT_EQ(2 + 3 * (std::size_t{kElements} - 1) + 1 + 2, text.size());
    EXPECT_EQ(", 0, 7 ]", text.substr(text.size() - 8));
}

TEST_F(OddAnswers, OfTheLargestLengthHaveAValue) {
    addArray(kInt16, kMostElements);
    publish();
    EXPECT_FALSE(node()->value().empty());
}

class LengthThatCannotBe : public OddAnswers, public testing::WithParamInterface<int> {};

TEST_P(LengthThatCannotBe, LeavesTheNodeWithoutAValue) {
    addArray(kInt16, GetParam(), "x", kReadOnly);
    const Lines calls = callsOf([&] { publish(); });
    EXPECT_EQ("nothing", value());
    EXPECT_EQ("string what it does", meta("help"));
    EXPECT_EQ("bool 1", meta("read_only"));
    EXPECT_EQ(0, engine.count("SEDiagGetInt16Array"));
}

TEST_P(LengthThatCannotBe, IsTraced) {
    addArray(kInt16, GetParam());
    EXPECT_EQ((Lines{"diags/basic/x", "No value for x: its length is " + std::to_string(GetParam())}),
              recordsOf([&] { publish(); }));
}

TEST_P(LengthThatCannotBe, KeepsAnEarlierValue) {
    addArray(kInt16, 2);
    publish();
    engine->set_length(0, GetParam());
    publish();
    EXPECT_EQ("string [ 0, 0 ]", value());
}

INSTANTIATE_TEST_SUITE_P(Of, LengthThatCannotBe, testing::Values(kMostElements + 1, kHuge));

TEST_F(OddAnswers, AMillionTimesLeaveTheCatalogueOut) {
    add(kInt32);
    engine->set_reported_count(kMostDiags + 1);
    EXPECT_EQ((Lines{"No diagnostics: their number is 262145"}), recordsOf([&] { publish(); }));
    EXPECT_FALSE(root->exists("diags"));
    EXPECT_EQ("int32 0", top("location"));
}

TEST_F(OddAnswers, OfAHugeCountAreNotApplied) {
    addPublished(kInt32);
    node()->set<int>(7);
    engine->set_reported_count(kHuge);
    EXPECT_TRUE(applied().empty());
    EXPECT_EQ(1, engine.count("MMIfSetAecBypass"));
}

TEST_F(OddAnswers, OfANegativeCountAreNone) {
    add(kInt32);
    engine->set_reported_count(-1);
    EXPECT_EQ(Lines{}, recordsOf([&] { publish(); }));
    apply();
    EXPECT_FALSE(root->exists("diags"));
}

}  // namespace
