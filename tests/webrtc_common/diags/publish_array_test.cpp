// Publishing arrays, and which of them are left out because of their size.
#include <ostream>

#include "tests/webrtc_common/diags/bridge.h"

using namespace quill::test;

namespace {

class PublishArray : public Bridge {
  protected:
    bool isThere(const std::string& name = "x") { return root->exists(path(name)); }
    void transferLargeArrays(bool on) { root->getNode("transfer_large_arrays", true)->set<bool>(on); }
};

struct ArrayCase {
    const char* name;
    int type;
    const char* text;  // of the elements 0, -1 and 1
};

std::ostream& operator<<(std::ostream& out, const ArrayCase& c) {
    return out << c.name;
}

class PublishArrayOfType : public Bridge, public testing::WithParamInterface<ArrayCase> {};

TEST_P(PublishArrayOfType, RendersTheElementsAsText) {
    const int index = addArray(GetParam().type, 3);
    engine->set_element(index, 1, -1);
    engine->set_element(index, 2, 1);
    engine->set_real_element(index, 1, -1.0f);
    engine->set_real_element(index, 2, 1.0f);
    publish();
    EXPECT_EQ("string " + std::string(GetParam().text), value());
    EXPECT_EQ("nothing", mark());
}

INSTANTIATE_TEST_SUITE_P(EachType, PublishArrayOfType,
                         testing::Values(ArrayCase{"Int16", kInt16, "[ 0, -1, 1 ]"},
                                         ArrayCase{"Int32", kInt32, "[ 0, -1, 1 ]"},
                                         ArrayCase{"UInt16", kUInt16, "[ 0, 65535, 1 ]"},
                                         ArrayCase{"UInt32", kUInt32, "[ 0, 4294967295, 1 ]"},
                                         ArrayCase{"Int40", kInt40, "[ 0, -1, 1 ]"},
                                         // Kept on purpose: unsigned here, signed as a scalar.
                                         ArrayCase{"UInt40", kUInt40, "[ 0, 18446744073709551615, 1 ]"},
                                         ArrayCase{"Float32", kFloat32, "[ 0, -1, 1 ]"}),
                         [](const auto& instance) { return instance.param.name; });

TEST_F(PublishArray, OfTwoElementsIsText) {
    addArray(kInt16, 2);
    publish();
    EXPECT_EQ("string [ 0, 0 ]", value());
}

TEST_F(PublishArray, OfOneElementIsAScalar) {
    addArray(kInt16, 1);
    publish();
    EXPECT_EQ("int32 0", value());
}

TEST_F(PublishArray, OfTenElementsIsAlwaysThere) {
    addArray(kInt16, 10);
    publish();
    EXPECT_EQ("string [ 0, 0, 0, 0, 0, 0, 0, 0, 0, 0 ]", value());
}

TEST_F(PublishArray, OfElevenElementsIsAbsentUntilLargeArraysAreAskedFor) {
    addArray(kInt16, 11);
    publish();
    EXPECT_FALSE(isThere()) << "unset";
    EXPECT_EQ("bool 0", top("transfer_large_arrays"));
    transferLargeArrays(false);
    publish();
    EXPECT_FALSE(isThere()) << "false";
    transferLargeArrays(true);
    publish();
    EXPECT_EQ("string [ 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0 ]", value());
}

TEST_F(PublishArray, StaysAsItIsOnceLargeArraysAreNoLongerAskedFor) {
    const int index = addArray(kInt16, 11);
    transferLargeArrays(true);
    publish();
    const std::string before = value();
    transferLargeArrays(false);
    engine->set_element(index, 0, 5);
    publish();
    EXPECT_EQ(before, value());
}

TEST_F(PublishArray, IsLeftAloneByAPassThatPassesItOver) {
    addArray(kInt16, 11, "x", kReadOnly);
    node()->set<int>(4);
    publish();
    EXPECT_EQ("int32 4", value());
    EXPECT_EQ("nothing", meta("read_only"));
}

TEST_F(PublishArray, HasOneAnswerAboutLargeArraysForTheWholePass) {
    addArray(kInt16, 11, "first");
    addArray(kInt16, 11, "second");
    engine->set_callback(
        [](const char* call, void* opaque) {
            if (std::string(call) != "SEDiagGetNumDiags()") return;
            static_cast<quill::PropertyNode*>(opaque)
                ->getNode("transfer_large_arrays", true)
                ->set<bool>(true);
        },
        root.get());
    publish();
    EXPECT_FALSE(isThere("first"));
    EXPECT_FALSE(isThere("second"));
}

TEST_F(PublishArray, FollowsTheEngineAndOverwritesEditsOnEveryPass) {
    const int index = addArray(kInt32, 2);
    publish();
    engine->set_element(index, 1, 5);
    publish();
    EXPECT_EQ("string [ 0, 5 ]", value());
    node()->set<std::string>("[ 9, 9 ]");
    publish();
    EXPECT_EQ("string [ 0, 5 ]", value());
}

TEST_F(PublishArray, LogsNothingOfItsValue) {
    addArray(kInt32, 2);
    EXPECT_EQ((Lines{"diags/basic/x"}), recordsOf([&] { publish(); }));
}

TEST_F(PublishArray, HasTheLengthOfTheSecondAnswer) {
    addArray(kInt16, 10);
    struct Context {
        TestEngine& engine;
        int questions;
    } context{engine, 0};
    engine->set_callback(
        [](const char* call, void* opaque) {
            auto& c = *static_cast<Context*>(opaque);
            if (std::string(call) == "SEDiagGetLen(0)" && ++c.questions == 2) c.engine->set_length(0, 12);
        },
        &context);
    publish();
    EXPECT_EQ("string [ 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0 ]", value());
}

TEST_F(PublishArray, OfFloatsHasSixSignificantDigits) {
    const int index = addArray(kFloat32, 3);
    engine->set_real_element(index, 0, 0.5f);
    engine->set_real_element(index, 1, 0.0000001f);
    engine->set_real_element(index, 2, 1.25e6f);
    publish();
    EXPECT_EQ("string [ 0.5, 1e-07, 1.25e+06 ]", value());
}

}  // namespace
