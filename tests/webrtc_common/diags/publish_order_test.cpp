// The queries of a publishing pass, their order, and the records.
#include <ostream>

#include "tests/webrtc_common/diags/bridge.h"
#include "webrtc_common/se_wrapper/records.h"

using namespace quill::test;

namespace {

class PublishOrder : public Bridge {
  protected:
    // The calls of a pass after the count query and before the values that follow the catalogue.
    Lines callsAboutDiags() {
        Lines calls = callsOf([&] { publish(); });
        EXPECT_EQ("SEDiagGetNumDiags()", calls.front());
        EXPECT_EQ((Lines{"MMIfGetCurrentLocation()", "MMIfGetAecBypass()", "MMIfGetNoiseReductionBypass()"}),
                  Lines(calls.end() - 3, calls.end()));
        return Lines(calls.begin() + 1, calls.end() - 3);
    }
};

TEST_F(PublishOrder, AsksForTheHelpTextOnTheFirstPassOnly) {
    add(kInt32);
    EXPECT_EQ((Lines{"SEDiagGetLen(0)", "SEDiagGetName(0)", "SEDiagGetLevel(0)", "SEDiagGetHelp(0)",
                     "SEDiagGetRW(0)", "SEDiagGetLen(0)", "SEDiagGetType(0)", "SEDiagGetInt32(0)"}),
              callsAboutDiags());
    EXPECT_EQ((Lines{"SEDiagGetLen(0)", "SEDiagGetName(0)", "SEDiagGetLevel(0)", "SEDiagGetRW(0)",
                     "SEDiagGetLen(0)", "SEDiagGetType(0)", "SEDiagGetInt32(0)"}),
              callsAboutDiags());
}

TEST_F(PublishOrder, AsksAnEnumForItsLabelFirstAndForItsNumberTwice) {
    add(kEnum);
    publish();
    EXPECT_EQ((Lines{"SEDiagGetLen(0)", "SEDiagGetName(0)", "SEDiagGetLevel(0)", "SEDiagGetRW(0)",
                     "SEDiagGetLen(0)", "SEDiagGetType(0)", "SEDiagGetEnumAsString(0)",
                     "SEDiagGetEnumAsInt(0)", "SEDiagGetEnumAsInt(0)"}),
              callsAboutDiags());
}

TEST_F(PublishOrder, AsksForTheLengthAloneOfALargeArray) {
    addArray(kInt16, 11);
    EXPECT_EQ((Lines{"SEDiagGetLen(0)"}), callsAboutDiags());
}

TEST_F(PublishOrder, AsksForNoValueOfAnUnknownType) {
    add(0);
    addArray(9, 2);
    publish();
    EXPECT_EQ((Lines{"SEDiagGetLen(0)", "SEDiagGetName(0)", "SEDiagGetLevel(0)", "SEDiagGetRW(0)",
                     "SEDiagGetLen(0)", "SEDiagGetType(0)", "SEDiagGetLen(1)", "SEDiagGetName(1)",
                     "SEDiagGetLevel(1)", "SEDiagGetRW(1)", "SEDiagGetLen(1)", "SEDiagGetType(1)"}),
              callsAboutDiags());
}

TEST_F(PublishOrder, TakesTheDiagnosticsByIndex) {
    for (const char* name : {"c", "a", "b"}) add(kInt16, name);
    publish();
    EXPECT_EQ((Lines{"diags/basic/c", "diags/basic/a", "diags/basic/b"}), recordsOf([&] { publish(); }));
}

TEST_F(PublishOrder, AsksForTheNameAgainOnlyToLogANewValue) {
    const int index = add(kInt32);
    publish();
    engine->set_integer(index, 5);
    recordsOf([&] {
        EXPECT_EQ((Lines{"SEDiagGetLen(0)", "SEDiagGetName(0)", "SEDiagGetLevel(0)", "SEDiagGetRW(0)",
                         "SEDiagGetLen(0)", "SEDiagGetType(0)", "SEDiagGetInt32(0)", "SEDiagGetName(0)"}),
                  callsAboutDiags());
    });
}

TEST_F(PublishOrder, UsesTheReportedCount) {
    add(kInt32, "a");
    add(kInt32, "b");
    engine->set_reported_count(1);
    publish();
    EXPECT_TRUE(root->exists(path("a")));
    EXPECT_FALSE(root->exists(path("b")));
}

TEST_F(PublishOrder, PublishesNoDiagnosticForANegativeCount) {
    add(kInt32);
    engine->set_reported_count(-1);
    EXPECT_EQ(Lines{}, callsAboutDiags());
    EXPECT_FALSE(root->exists("diags"));
}

TEST_F(PublishOrder, ReadsTheFlagBeforeItAsksTheEngine) {
    engine->set_callback(
        [](const char*, void* opaque) {
            EXPECT_TRUE(static_cast<quill::PropertyNode*>(opaque)->exists("transfer_large_arrays"));
        },
        root.get());
    publish();
}

struct TypeCase {
    const char* name;
    int type;
    const char* scalar_call;
    const char* array_call;  // null: none
};

std::ostream& operator<<(std::ostream& out, const TypeCase& c) {
    return out << c.name;
}

class PublishQueries : public Bridge, public testing::WithParamInterface<TypeCase> {};

TEST_P(PublishQueries, UseTheGetterOfTheType) {
    add(GetParam().type, "scalar");
    addArray(GetParam().type, 2, "array");
    publish();
    const Lines calls = callsOf([&] { publish(); });
    const auto after = [&](const char* call) { return *(std::find(calls.begin(), calls.end(), call) + 1); };
    EXPECT_EQ(GetParam().scalar_call, after("SEDiagGetType(0)"));
    const std::string next = GetParam().array_call ? GetParam().array_call : "MMIfGetCurrentLocation()";
    EXPECT_EQ(next, after("SEDiagGetType(1)"));
}

INSTANTIATE_TEST_SUITE_P(
    EachType, PublishQueries,
    testing::Values(TypeCase{"Int16", kInt16, "SEDiagGetInt16(0)", "SEDiagGetInt16Array(1)"},
                    TypeCase{"Int32", kInt32, "SEDiagGetInt32(0)", "SEDiagGetInt32Array(1)"},
                    TypeCase{"UInt16", kUInt16, "SEDiagGetUInt16(0)", "SEDiagGetUInt16Array(1)"},
                    TypeCase{"UInt32", kUInt32, "SEDiagGetUInt32(0)", "SEDiagGetUInt32Array(1)"},
                    TypeCase{"Int40", kInt40, "SEDiagGetInt40(0)", "SEDiagGetInt40Array(1)"},
                    TypeCase{"UInt40", kUInt40, "SEDiagGetUInt40(0)", "SEDiagGetUInt40Array(1)"},
                    TypeCase{"Float32", kFloat32, "SEDiagGetFloat32(0)", "SEDiagGetFloat32Array(1)"},
                    TypeCase{"Enum", kEnum, "SEDiagGetEnumAsString(0)", nullptr}),
    [](const auto& instance) { return instance.param.name; });

class PublishRecord : public Bridge {
  protected:
    std::string updateOf(int type, long long integer, float real = 0) {
        const int index = add(type);
        engine->set_integer(index, integer);
        engine->set_real(index, real);
        return recordsOf([&] { publish(); }).back();
    }
};

TEST_F(PublishRecord, HasTheWrappersTagAndSource) {
    add(kInt32);
    const ScopedLogCapture log(5);
    publish();
    ASSERT_EQ(2u, log.records().size());
    for (const quill::LogRecord& record : log.records()) {
        EXPECT_EQ(5, record.level);
        EXPECT_STREQ("se_wrapper", record.tag);
        EXPECT_STREQ(SE_WRAPPER_SOURCE, record.source);
    }
}

TEST_F(PublishRecord, IsMadeAtLevelFiveOnly) {
    add(kInt32);
    const ScopedLogCapture log(4);
    publish();
    EXPECT_TRUE(log.records().empty());
}

TEST_F(PublishRecord, WritesEachNumberInDecimal) {
    EXPECT_EQ("Updating x to -32768", updateOf(kInt16, -32768));
}
TEST_F(PublishRecord, WritesAUInt32AsAnUnsignedNumber) {
    EXPECT_EQ("Updating x to 4294967295", updateOf(kUInt32, UINT32_MAX));
}
TEST_F(PublishRecord, WritesAnInt40InFull) {
    EXPECT_EQ("Updating x to -549755813888", updateOf(kInt40, -(1LL << 39)));
}
TEST_F(PublishRecord, WritesAUInt40AsASignedNumber) {
    EXPECT_EQ("Updating x to -1", updateOf(kUInt40, -1));
}
TEST_F(PublishRecord, WritesAFloatWithSixSignificantDigits) {
    EXPECT_EQ("Updating x to 1.23457e+06", updateOf(kFloat32, 0, 1234567.0f));
}

}  // namespace
