// Applying texts, mainly those of enumerations.
#include "tests/webrtc_common/diags/bridge.h"

using namespace quill::test;

namespace {

class ApplyText : public Bridge {};

TEST_F(ApplyText, CountsATextThatIsNoNumberAsZero) {
    addPublished(kInt32, 5);
    node()->set<std::string>("abc");
    EXPECT_EQ((Lines{"SEDiagSetInt32(0, 0)"}), applied());
    EXPECT_EQ("int32 0", mark());
    EXPECT_EQ("string abc", value());
    expected_assertions = {failedConversion("abc")};
}

TEST_F(ApplyText, TakesATextThatIsNoNumberForUnchangedWhereTheMarkIsZero) {
    addPublished(kInt32);
    node()->set<std::string>("abc");
    EXPECT_EQ(Lines{}, applied());
    expected_assertions = {failedConversion("abc")};
}

TEST_F(ApplyText, IgnoresWhatFollowsTheNumberInAText) {
    addPublished(kInt32);
    node()->set<std::string>(" 12 dB");
    EXPECT_EQ((Lines{"SEDiagSetInt32(0, 12)"}), applied());
}

TEST_F(ApplyText, TruncatesAFloatForAnInteger) {
    addPublished(kInt32);
    node()->set<float>(7.75f);
    EXPECT_EQ((Lines{"SEDiagSetInt32(0, 7)"}), applied());
}

class ApplyEnum : public Bridge {
  protected:
    int addWide() {
        const int index = add(kEnum);
        engine->set_label(index, 2, "Narrow");
        engine->set_label(index, 3, "Wide");
        engine->set_integer(index, 2);
        publish();
        return index;
    }
};

TEST_F(ApplyEnum, SendsNothingOfAnUneditedNode) {
    addWide();
    EXPECT_EQ(Lines{}, applied());
}

TEST_F(ApplyEnum, SendsTheTextOfANumber) {
    addWide();
    node()->set<std::string>("3");
    EXPECT_EQ((Lines{"SEDiagSetEnumAsInt(0, 3)"}), applied());
    EXPECT_EQ("int32 3", mark());
    publish();
    EXPECT_EQ("string 3 - Wide", value());
}

TEST_F(ApplyEnum, SendsTheNumberInFrontOfALabel) {
    addWide();
    node()->set<std::string>("3 - Wide");
    EXPECT_EQ((Lines{"SEDiagSetEnumAsInt(0, 3)"}), applied());
}

TEST_F(ApplyEnum, SendsTheNumberInFrontOfAnotherNumbersLabel) {
    addWide();
    node()->set<std::string>("3 - Narrow");
    EXPECT_EQ((Lines{"SEDiagSetEnumAsInt(0, 3)"}), applied());
}

TEST_F(ApplyEnum, TakesTheSameNumberWithAnotherLabelForUnchanged) {
    addWide();
    node()->set<std::string>("2 - whatever");
    EXPECT_EQ(Lines{}, applied());
}

TEST_F(ApplyEnum, CountsALabelWithoutANumberAsZero) {
    addWide();
    node()->set<std::string>("Wide");
    EXPECT_EQ((Lines{"SEDiagSetEnumAsInt(0, 0)"}), applied());
    expected_assertions = {failedConversion("Wide")};
}

TEST_F(ApplyEnum, LosesAnEditToAPublishingPassInBetween) {
    addWide();
    node()->set<std::string>("3");
    publish();
    EXPECT_EQ(Lines{}, applied());
    EXPECT_EQ("string 2 - Narrow", value());
}

TEST_F(ApplyEnum, LetsTheEngineWinWhenBothHaveMoved) {
    engine->set_integer(addWide(), 5);
    node()->set<std::string>("3");
    EXPECT_EQ(Lines{}, applied());
}

}  // namespace
