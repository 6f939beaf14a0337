// Publishing scalars of each type, and when they are written.
#include <cmath>
#include <ostream>

#include "tests/webrtc_common/diags/bridge.h"

using namespace quill::test;

namespace {

class PublishScalar : public Bridge {};

struct IntegerCase {
    const char* name;
    int type;
    long long in_engine;
    const char* in_tree;  // value and mark
};

std::ostream& operator<<(std::ostream& out, const IntegerCase& c) {
    return out << c.name;
}

class PublishInteger : public Bridge, public testing::WithParamInterface<IntegerCase> {};

TEST_P(PublishInteger, WritesValueAndMarkInTheTypeOfTheTree) {
    engine->set_integer(add(GetParam().type), GetParam().in_engine);
    publish();
    EXPECT_EQ(GetParam().in_tree, value());
    EXPECT_EQ(GetParam().in_tree, mark());
}

INSTANTIATE_TEST_SUITE_P(
    EachType, PublishInteger,
    testing::Values(IntegerCase{"LowestInt16", kInt16, -32768, "int32 -32768"},
                    IntegerCase{"HighestInt16", kInt16, 32767, "int32 32767"},
                    IntegerCase{"LowestInt32", kInt32, INT32_MIN, "int32 -2147483648"},
                    IntegerCase{"HighestInt32", kInt32, INT32_MAX, "int32 2147483647"},
                    IntegerCase{"ZeroUInt16", kUInt16, 0, "int32 0"},
                    IntegerCase{"HighestUInt16", kUInt16, 65535, "int32 65535"},
                    IntegerCase{"ZeroUInt32", kUInt32, 0, "int64 0"},
                    IntegerCase{"HighestUInt32", kUInt32, UINT32_MAX, "int64 4294967295"},
                    IntegerCase{"LowestInt40", kInt40, -(1LL << 39), "int64 -549755813888"},
                    IntegerCase{"HighestInt40", kInt40, (1LL << 39) - 1, "int64 549755813887"},
                    IntegerCase{"LowestInt64", kInt40, INT64_MIN, "int64 -9223372036854775808"},
                    IntegerCase{"HighestUInt40", kUInt40, (1LL << 40) - 1, "int64 1099511627775"},
                    // Kept on purpose: the bit pattern of an unsigned number in a signed one.
                    IntegerCase{"HighestUInt64", kUInt40, -1, "int64 -1"}),
    [](const auto& instance) { return instance.param.name; });

class PublishEveryType : public Bridge, public testing::WithParamInterface<int> {};

TEST_P(PublishEveryType, LeavesAnUnchangedScalarAlone) {
    add(GetParam());
    publish();
    const std::string before = value();
    const auto counter = node()->setMeta<int>("probe", 1);
    publish();
    EXPECT_EQ(before, value());
    EXPECT_EQ(counter + 1, node()->setMeta<int>("probe", 2));
}

TEST_P(PublishEveryType, WritesAReadOnlyScalarToo) {
    add(GetParam(), "x", kReadOnly);
    publish();
    EXPECT_NE("nothing", value());
    EXPECT_NE("nothing", mark());
}

TEST_P(PublishEveryType, FollowsTheEngine) {
    const int index = add(GetParam());
    publish();
    engine->set_integer(index, 9);
    engine->set_real(index, 9);
    engine->set_label(index, 9, "Nine");
    publish();
    EXPECT_EQ(9, node()->get<int>());
    int exchanged = 0;
    EXPECT_TRUE(node()->getMeta("se_diag", exchanged));
    EXPECT_EQ(9, exchanged);
}

INSTANTIATE_TEST_SUITE_P(EachType, PublishEveryType, testing::Range(1, 9));

TEST_F(PublishScalar, WritesAFloat) {
    engine->set_real(add(kFloat32), 0.5f);
    publish();
    EXPECT_EQ("float 0.500000", value());
    EXPECT_EQ("float 0.500000", mark());
}

TEST_F(PublishScalar, WritesAValueOfZeroOnceWithoutAMark) {
    add(kInt32);
    EXPECT_EQ((Lines{"diags/basic/x", "Updating x to 0"}), recordsOf([&] { publish(); }));
    EXPECT_EQ("int32 0", value());
    EXPECT_EQ((Lines{"diags/basic/x"}), recordsOf([&] { publish(); }));
}

TEST_F(PublishScalar, WritesAnUnchangedInt32OnceInTwoPasses) {
    engine->set_integer(add(kInt32), 5);
    int writes = 0;
    node()->addListener([&](quill::PropertyNode&, const quill::PropertyChangeInfo& info) {
        if (info.kind == quill::PropertyChangeInfo::kValue) ++writes;
    });
    EXPECT_EQ((Lines{"diags/basic/x", "Updating x to 5"}), recordsOf([&] { publish(); }));
    EXPECT_EQ((Lines{"diags/basic/x"}), recordsOf([&] { publish(); }));
    EXPECT_EQ(1, writes);
}

TEST_F(PublishScalar, TakesALengthOfZeroOrLessForASingleValue) {
    engine->set_integer(addArray(kInt16, 0, "zero"), 5);
    engine->set_integer(addArray(kInt16, -7, "negative"), 6);
    publish();
    EXPECT_EQ("int32 5", value("zero"));
    EXPECT_EQ("int32 6", value("negative"));
}

TEST_F(PublishScalar, KeepsAUsersEditWhileTheEngineValueIsUnchanged) {
    engine->set_integer(add(kInt32), 5);
    publish();
    node()->set<int>(7);
    publish();
    EXPECT_EQ("int32 7", value());
    EXPECT_EQ("int32 5", mark());
}

TEST_F(PublishScalar, OverwritesAUsersEditWhenTheEngineMoves) {
    const int index = add(kInt32);
    publish();
    node()->set<int>(7);
    engine->set_integer(index, 6);
    publish();
    EXPECT_EQ("int32 6", value());
    EXPECT_EQ("int32 6", mark());
}

TEST_F(PublishScalar, GivesAnEditedTextItsOwnTypeBackWhenTheEngineMoves) {
    const int index = add(kUInt32);
    publish();
    node()->set<std::string>("7");
    engine->set_integer(index, 6);
    publish();
    EXPECT_EQ("int64 6", value());
}

TEST_F(PublishScalar, ComparesWithAMarkOfAnotherType) {
    engine->set_integer(add(kInt40), 5);
    publish();
    node()->setMeta<int>("se_diag", 5);
    node()->set<int>(8);
    publish();
    EXPECT_EQ("int32 8", value());
}

// A mark that does not convert counts as the value that the conversion left.
TEST_F(PublishScalar, TakesAnUnreadableMarkForZero) {
    engine->set_integer(add(kInt32, "moved"), 5);
    add(kInt32, "at_zero");
    node("moved")->setMeta<std::string>("se_diag", "abc");
    node("at_zero")->setMeta<std::string>("se_diag", "abc");
    publish();
    EXPECT_EQ("int32 5", mark("moved"));
    EXPECT_EQ("string abc", mark("at_zero"));
    EXPECT_EQ("nothing", value("at_zero"));
    expected_assertions = {failedConversion("abc"), failedConversion("abc")};
}

TEST_F(PublishScalar, LeavesNoEmptyMetadataBehind) {
    addArray(kInt32, 2);
    publish();
    const quill::PropertyNodeData::SharedDataLock lock(node().get(), nullptr);
    EXPECT_EQ(0u, lock->metadata->count("se_diag"));
}

TEST_F(PublishScalar, RepublishesNaNOnEveryPassWithoutAChange) {
    engine->set_real(add(kFloat32), std::copysign(NAN, 1.0f));
    publish();
    EXPECT_EQ("float nan", value());
    EXPECT_EQ("float nan", mark());
    int changes = 0;
    node()->addListener([&](quill::PropertyNode&, const quill::PropertyChangeInfo&) { ++changes; });
    EXPECT_EQ((Lines{"diags/basic/x", "Updating x to nan"}), recordsOf([&] { publish(); }));
    EXPECT_EQ(0, changes);
}

TEST_F(PublishScalar, OverwritesAUsersEditWithNaN) {
    engine->set_real(add(kFloat32), NAN);
    publish();
    node()->set<float>(1.0f);
    publish();
    EXPECT_TRUE(std::isnan(node()->get<float>()));
}

TEST_F(PublishScalar, TreatsBothZerosAsEqual) {
    const int index = add(kFloat32);
    engine->set_real(index, 0.0f);
    publish();
    engine->set_real(index, -0.0f);
    publish();
    EXPECT_EQ("float 0.000000", value());
}

TEST_F(PublishScalar, WritesInfinity) {
    engine->set_real(add(kFloat32), -INFINITY);
    publish();
    EXPECT_EQ("float -inf", value());
    EXPECT_EQ("float -inf", mark());
}

class PublishUnknownType : public Bridge, public testing::WithParamInterface<int> {};

TEST_P(PublishUnknownType, MakesANodeWithoutAValue) {
    add(GetParam(), "scalar", kReadOnly);
    addArray(GetParam(), 3, "array");
    publish();
    EXPECT_EQ("nothing", value("scalar"));
    EXPECT_EQ("nothing", mark("scalar"));
    EXPECT_EQ("nothing", value("array"));
    EXPECT_EQ("string what it does", meta("help", "scalar"));
    EXPECT_EQ("bool 1", meta("read_only", "scalar"));
}

TEST_P(PublishUnknownType, KeepsWhateverValueTheNodeHad) {
    const int index = add(kInt32);
    engine->set_integer(index, 5);
    publish();
    engine->set_type(index, GetParam());
    engine->set_integer(index, 6);
    publish();
    EXPECT_EQ("int32 5", value());
    EXPECT_EQ("int32 5", mark());
}

INSTANTIATE_TEST_SUITE_P(EachNumber, PublishUnknownType,
                         testing::Values(0, 9, 100, -1, INT32_MAX, INT32_MIN));

}  // namespace
