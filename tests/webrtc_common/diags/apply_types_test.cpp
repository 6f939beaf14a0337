// Applying an edit for each type: reading, comparing, truncating, widening.
#include <ostream>

#include "tests/webrtc_common/diags/bridge.h"

using namespace quill::test;

namespace {

// The smaller types read it as 2147483647 or 705032704.
constexpr long kBeyond32Bits = 5'000'000'000;

struct EditCase {
    const char* name;
    int type;
    long edit;
    const char* call;  // empty: the edit is not applied
    const char* mark;
};

std::ostream& operator<<(std::ostream& out, const EditCase& c) {
    return out << c.name;
}

class ApplyEdit : public Bridge, public testing::WithParamInterface<EditCase> {
  protected:
    void expectCall() {
        const Lines expected = *GetParam().call ? Lines{GetParam().call} : Lines{};
        EXPECT_EQ(expected, applied());
        EXPECT_EQ(GetParam().mark, mark());
    }
};

TEST_P(ApplyEdit, OfANumber) {
    addPublished(GetParam().type);
    node()->set<long>(GetParam().edit);
    expectCall();
}

TEST_P(ApplyEdit, OfAText) {
    addPublished(GetParam().type);
    node()->set<std::string>(std::to_string(GetParam().edit));
    expectCall();
}

INSTANTIATE_TEST_SUITE_P(
    EachType, ApplyEdit,
    testing::Values(
        EditCase{"Int16", kInt16, 7, "SEDiagSetInt16(0, 7)", "int32 7"},
        EditCase{"NegativeInt16", kInt16, -1, "SEDiagSetInt16(0, -1)", "int32 -1"},
        EditCase{"Int16BeyondItsRange", kInt16, 65536 + 5, "SEDiagSetInt16(0, 5)", "int32 65541"},
        EditCase{"Int16JustBeyondItsRange", kInt16, 32768, "SEDiagSetInt16(0, -32768)", "int32 32768"},
        EditCase{"Int32", kInt32, 7, "SEDiagSetInt32(0, 7)", "int32 7"},
        EditCase{"LowestInt32", kInt32, INT32_MIN, "SEDiagSetInt32(0, -2147483648)", "int32 -2147483648"},
        EditCase{"UInt16", kUInt16, 65535, "SEDiagSetUInt16(0, 65535)", "int32 65535"},
        EditCase{"NegativeUInt16", kUInt16, -1, "SEDiagSetUInt16(0, 65535)", "int32 -1"},
        EditCase{"UInt16BeyondItsRange", kUInt16, 65536 + 5, "SEDiagSetUInt16(0, 5)", "int32 65541"},
        EditCase{"UInt32", kUInt32, 4294967295, "SEDiagSetUInt32(0, 4294967295)", "int64 4294967295"},
        EditCase{"NegativeUInt32", kUInt32, -1, "SEDiagSetUInt32(0, 4294967295)", "int64 -1"},
        EditCase{"UInt32BeyondItsRange", kUInt32, kBeyond32Bits, "SEDiagSetUInt32(0, 705032704)",
                 "int64 5000000000"},
        EditCase{"Int40", kInt40, INT32_MAX, "SEDiagSetInt40(0, 2147483647)", "int32 2147483647"},
        EditCase{"NegativeInt40", kInt40, -1, "SEDiagSetInt40(0, -1)", "int32 -1"},
        EditCase{"UInt40", kUInt40, INT32_MAX, "SEDiagSetUInt40(0, 2147483647)", "int32 2147483647"},
        // Kept on purpose: widened with its sign.
        EditCase{"NegativeUInt40", kUInt40, -1, "SEDiagSetUInt40(0, 18446744073709551615)", "int32 -1"},
        EditCase{"Float32", kFloat32, 7, "SEDiagSetFloat32(0, 7)", "float 7.000000"},
        EditCase{"Enum", kEnum, 3, "SEDiagSetEnumAsInt(0, 3)", "int32 3"},
        EditCase{"NegativeEnum", kEnum, -1, "SEDiagSetEnumAsInt(0, -1)", "int32 -1"}),
    [](const auto& instance) { return instance.param.name; });

class ApplyToEveryType : public Bridge, public testing::WithParamInterface<int> {};

TEST_P(ApplyToEveryType, LetsTheEngineWinWhenBothHaveMoved) {
    const int index = add(GetParam());
    publish();
    node()->set<int>(7);
    engine->set_integer(index, 6);
    engine->set_real(index, 6);
    apply();
    EXPECT_EQ(6, engine->integer(index));
    EXPECT_EQ(6, engine->real(index));
    publish();
    EXPECT_EQ(6, node()->get<int>());
}

TEST_P(ApplyToEveryType, SendsNothingOfAReadOnlyDiagnostic) {
    const int index = add(GetParam(), "x", kReadOnly);
    publish();
    node()->set<int>(7);
    apply();
    EXPECT_EQ(0, engine->integer(index));
    EXPECT_EQ(0, engine->real(index));
}

TEST_P(ApplyToEveryType, AsksTheEngineOnlyAboutAnEditedNode) {
    add(GetParam());
    publish();
    const Lines before = callsOf([&] { apply(); });
    node()->set<int>(7);
    const Lines after = callsOf([&] { apply(); });
    EXPECT_EQ(before.size() + 2, after.size());  // a getter and the setter
    const auto type_query = std::find(after.begin(), after.end(), "SEDiagGetType(0)");
    EXPECT_EQ(0u, (type_query + 1)->rfind("SEDiagGet", 0));
    EXPECT_EQ(0u, (type_query + 2)->rfind("SEDiagSet", 0));
}

TEST_P(ApplyToEveryType, AsksForTheNameAgainOnlyToLogTheEdit) {
    add(GetParam());
    publish();
    node()->set<int>(7);
    EXPECT_EQ((Lines{"User changed x to 7"}), recordsOf([&] { callsOf([&] { apply(); }); }));
    const Lines calls = engine.calls();
    EXPECT_EQ(2, engine.count("SEDiagGetName"));
    const auto type_query = std::find(calls.begin(), calls.end(), "SEDiagGetType(0)");
    EXPECT_EQ("SEDiagGetName(0)", *(type_query + 2));
}

INSTANTIATE_TEST_SUITE_P(EachType, ApplyToEveryType, testing::Range(1, 9));

class ApplyTypes : public Bridge {};

TEST_F(ApplyTypes, MakeTheRoundTrip) {
    const int index = addPublished(kInt16);
    node()->set<int>(65536 + 5);
    apply();
    EXPECT_EQ(5, engine->integer(index));
    publish();
    EXPECT_EQ("int32 5", value()) << "the cut value, since it differs from the mark";
}

}  // namespace
