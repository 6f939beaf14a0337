// What reaches the engine of an edit, type by type: reading, comparing, cutting, widening.
#include <cmath>
#include <ostream>

#include "tests/webrtc_common/diags/bridge.h"

using namespace quill::test;

namespace {

// 2147483647 and 705032704: what the smaller types make of it.
constexpr long kBeyond32Bits = 5'000'000'000;

class ApplyTypes : public Bridge {
  protected:
    int addPublished(int type, long long in_engine = 0, const char* name = "x") {
        const int index = add(type, name);
        engine->set_integer(index, in_engine);
        engine->set_real(index, static_cast<float>(in_engine));
        publish();
        return index;
    }
    // The calls of setters in one applying pass.
    Lines applied() {
        Lines setters;
        for (const std::string& call : callsOf([&] { apply(); })) {
            if (call.rfind("SEDiagSet", 0) == 0) setters.push_back(call);
        }
        return setters;
    }
};

struct EditCase {
    const char* name;
    int type;
    long edit;
    const char* call;  // empty: the edit goes nowhere
    const char* mark;
};

std::ostream& operator<<(std::ostream& out, const EditCase& c) {
    return out << c.name;
}

class ApplyEdit : public ApplyTypes, public testing::WithParamInterface<EditCase> {
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

TEST_F(ApplyTypes, GoTheWholeWayThereAndBack) {
    const int index = addPublished(kInt16);
    node()->set<int>(65536 + 5);
    apply();
    EXPECT_EQ(5, engine->integer(index));
    publish();
    EXPECT_EQ("int32 5", value()) << "the cut value, since it differs from the mark";
}

// --- Values beyond 32 bits

TEST_F(ApplyTypes, CountALongBeyond32BitsAsTheLargestInt) {
    addPublished(kInt32);
    node()->set<long>(kBeyond32Bits);
    EXPECT_EQ((Lines{"SEDiagSetInt32(0, 2147483647)"}), applied());
    EXPECT_EQ("int32 2147483647", mark());
    EXPECT_EQ("int64 5000000000", value());
    expected_assertions = {failedConversion("5000000000")};
}

TEST_F(ApplyTypes, CountALongBelow32BitsAsTheSmallestInt) {
    addPublished(kInt16);
    node()->set<long>(-kBeyond32Bits);
    EXPECT_EQ((Lines{"SEDiagSetInt16(0, 0)"}), applied());  // the low 16 bits of the smallest int
    EXPECT_EQ("int32 -2147483648", mark());
    expected_assertions = {failedConversion("-5000000000")};
}

TEST_F(ApplyTypes, CountAnEditBeyond64BitsAsTheLargestLong) {
    addPublished(kUInt32);
    node()->set<std::string>("9999999999999999999");
    EXPECT_EQ((Lines{"SEDiagSetUInt32(0, 4294967295)"}), applied());
    EXPECT_EQ("int64 9223372036854775807", mark());
    expected_assertions = {failedConversion("9999999999999999999")};
}

class Apply40Bits : public ApplyTypes, public testing::WithParamInterface<int> {
  protected:
    std::string setter(const std::string& number) {
        return (GetParam() == kInt40 ? "SEDiagSetInt40(0, " : "SEDiagSetUInt40(0, ") + number + ")";
    }
};

TEST_P(Apply40Bits, SendsAnEditOfAValueWithin32Bits) {
    addPublished(GetParam(), 5);
    node()->set<long>(7);
    EXPECT_EQ((Lines{setter("7")}), applied());
    EXPECT_EQ("int32 7", mark());
    EXPECT_EQ(Lines{}, applied());
    publish();
    EXPECT_EQ("int64 7", value()) << "the user's own value, since the engine has it";
}

// Node and mark are both out of range and count as the same number.
TEST_P(Apply40Bits, TakesAnUneditedValueBeyond32BitsForUnchanged) {
    addPublished(GetParam(), kBeyond32Bits);
    EXPECT_EQ(Lines{}, applied());
    EXPECT_EQ("int64 5000000000", mark());
    expected_assertions = {failedConversion("5000000000"), failedConversion("5000000000")};
}

TEST_P(Apply40Bits, CannotReplaceAValueBeyond32Bits) {
    addPublished(GetParam(), kBeyond32Bits);
    node()->set<long>(7);
    EXPECT_EQ(Lines{}, applied());
    EXPECT_EQ("int64 5000000000", mark());
    expected_assertions = {failedConversion("5000000000")};
}

TEST_P(Apply40Bits, SendsTheLargestIntForAnEditBeyond32Bits) {
    addPublished(GetParam(), 5);
    node()->set<long>(kBeyond32Bits);
    EXPECT_EQ((Lines{setter("2147483647")}), applied());
    EXPECT_EQ("int32 2147483647", mark());
    expected_assertions = {failedConversion("5000000000")};
}

// Kept on purpose: the engine has moved from 5 to 2^32 + 5, which looks the same in 32 bits.
TEST_P(Apply40Bits, ComparesTheLow32BitsOfTheEnginesValueOnly) {
    const int index = addPublished(GetParam(), 5);
    node()->set<long>(7);
    engine->set_integer(index, (1LL << 32) + 5);
    EXPECT_EQ((Lines{setter("7")}), applied());
}

TEST_P(Apply40Bits, ReplacesAValueWhoseLowHalfIsTheLargestInt) {
    addPublished(GetParam(), (1LL << 32) + INT32_MAX);
    node()->set<long>(7);
    EXPECT_EQ((Lines{setter("7")}), applied());
    expected_assertions = {failedConversion("6442450943")};
}

TEST_P(Apply40Bits, SendsAnEditOfANegativeValue) {
    addPublished(GetParam(), -5);
    node()->set<long>(7);
    EXPECT_EQ((Lines{setter("7")}), applied());
}

INSTANTIATE_TEST_SUITE_P(BothSigns, Apply40Bits, testing::Values(kInt40, kUInt40));

TEST_F(ApplyTypes, PublishA40BitValueInFullAfterItWasMarkedAsAnInt) {
    const int index = addPublished(kInt40, 5);
    node()->set<int>(7);
    apply();
    engine->set_integer(index, kBeyond32Bits);
    publish();
    EXPECT_EQ("int64 5000000000", value());
    EXPECT_EQ("int64 5000000000", mark());
}

// --- Texts

TEST_F(ApplyTypes, CountATextThatIsNoNumberAsZero) {
    addPublished(kInt32, 5);
    node()->set<std::string>("abc");
    EXPECT_EQ((Lines{"SEDiagSetInt32(0, 0)"}), applied());
    EXPECT_EQ("int32 0", mark());
    EXPECT_EQ("string abc", value());
    expected_assertions = {failedConversion("abc")};
}

TEST_F(ApplyTypes, TakeATextThatIsNoNumberForUnchangedWhereTheMarkIsZero) {
    addPublished(kInt32);
    node()->set<std::string>("abc");
    EXPECT_EQ(Lines{}, applied());
    expected_assertions = {failedConversion("abc")};
}

TEST_F(ApplyTypes, IgnoreWhatFollowsTheNumberInAText) {
    addPublished(kInt32);
    node()->set<std::string>(" 12 dB");
    EXPECT_EQ((Lines{"SEDiagSetInt32(0, 12)"}), applied());
}

TEST_F(ApplyTypes, CutAFloatOffForAnInteger) {
    addPublished(kInt32);
    node()->set<float>(7.75f);
    EXPECT_EQ((Lines{"SEDiagSetInt32(0, 7)"}), applied());
}

class ApplyEnum : public ApplyTypes {
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

// --- Floats

class ApplyFloat : public ApplyTypes {
  protected:
    int addAt(float in_engine) {
        const int index = add(kFloat32);
        engine->set_real(index, in_engine);
        publish();
        return index;
    }
};

TEST_F(ApplyFloat, SendsATextAndLogsSixSignificantDigits) {
    addAt(0.5f);
    node()->set<std::string>("1234567");
    EXPECT_EQ((Lines{"User changed x to 1.23457e+06"}), recordsOf([&] { apply(); }));
    EXPECT_EQ(1234567.0f, engine->real(0));
}

TEST_F(ApplyFloat, SendsNaN) {
    const int index = addAt(1.0f);
    node()->set<float>(NAN);
    apply();
    EXPECT_TRUE(std::isnan(engine->real(index)));
    EXPECT_EQ("float nan", mark());
}

TEST_F(ApplyFloat, SendsNaNOnlyOnceSinceTheMarkIsNaNThen) {
    addAt(1.0f);
    node()->set<float>(NAN);
    apply();
    EXPECT_EQ(Lines{}, applied());
}

TEST_F(ApplyFloat, IsNeverSentAgainstANaNMark) {
    const int index = addAt(NAN);
    node()->set<float>(1.0f);
    EXPECT_EQ(Lines{}, applied());
    engine->set_real(index, 1.0f);
    EXPECT_EQ(Lines{}, applied());
}

TEST_F(ApplyFloat, AsksTheEngineAboutANaNInTheNode) {
    addAt(NAN);
    apply();
    EXPECT_EQ(2, engine.count("SEDiagGetFloat32"));  // once by each pass
}

TEST_F(ApplyFloat, DoesNotTellTheZerosApart) {
    const int index = addAt(0.0f);
    node()->set<float>(-0.0f);
    EXPECT_EQ(Lines{}, applied());
    engine->set_real(index, -0.0f);
    node()->set<float>(1.0f);
    EXPECT_EQ((Lines{"SEDiagSetFloat32(0, 1)"}), applied());
}

TEST_F(ApplyFloat, SendsNegativeZeroAgainstAnotherMark) {
    const int index = addAt(1.0f);
    node()->set<float>(-0.0f);
    apply();
    EXPECT_EQ(0.0f, engine->real(index));
    EXPECT_TRUE(std::signbit(engine->real(index)));
}

TEST_F(ApplyFloat, SendsInfinity) {
    const int index = addAt(1.0f);
    node()->set<std::string>("-inf");
    apply();
    EXPECT_EQ(-INFINITY, engine->real(index));
}

}  // namespace
