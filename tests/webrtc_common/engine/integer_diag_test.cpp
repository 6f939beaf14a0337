// Setting an integer diagnostic by name.
#include "webrtc_common/se_wrapper/engine/integer_diag.h"

#include <gtest/gtest.h>

#include "tests/support/log_capture.h"
#include "tests/webrtc_common/engine/startable_engine.h"
#include "webrtc_common/se_wrapper.h"

using namespace quill::media::se_wrapper;
using quill::test::kFloat32;
using quill::test::kInt16;
using quill::test::kInt32;
using quill::test::kUInt16;
using quill::test::kUInt32;
using quill::test::ScopedLogCapture;
using quill::test::TestEngine;

namespace {

struct IntegerDiag : testing::Test {
    IntegerDiag() {
        openSignalEssenceDynamicLibrary("test_engines/full");
        engine->clear_calls();
    }

    // The setter calls for a diagnostic "x" of this type.
    std::vector<std::string> set(int type, int value) {
        engine->add_diag("x", type, 1, 3, 0, "");
        setIntegerDiag("x", value);
        std::vector<std::string> setters;
        for (const std::string& call : engine.calls()) {
            if (call.find("SEDiagSet") == 0) setters.push_back(call);
        }
        return setters;
    }

    TestEngine engine;
};

using Calls = std::vector<std::string>;

TEST_F(IntegerDiag, OfInt16TakesTheLow16BitsAsASignedNumber) {
    EXPECT_EQ(Calls{"SEDiagSetInt16(0, 4464)"}, set(kInt16, 70000));
}

TEST_F(IntegerDiag, OfInt16TakesNegativeNumbers) {
    EXPECT_EQ(Calls{"SEDiagSetInt16(0, -3)"}, set(kInt16, -3));
}

TEST_F(IntegerDiag, OfInt32TakesTheWholeValue) {
    EXPECT_EQ(Calls{"SEDiagSetInt32(0, -70000)"}, set(kInt32, -70000));
}

TEST_F(IntegerDiag, OfUInt16TakesTheLow16BitsAsAnUnsignedNumber) {
    EXPECT_EQ(Calls{"SEDiagSetUInt16(0, 65535)"}, set(kUInt16, -1));
}

TEST_F(IntegerDiag, OfUInt32TakesTheValueReinterpreted) {
    EXPECT_EQ(Calls{"SEDiagSetUInt32(0, 4294967295)"}, set(kUInt32, -1));
}

TEST_F(IntegerDiag, OfAnUnknownNameIsLoggedAndChangesNothing) {
    const ScopedLogCapture log;
    setIntegerDiag("no such diag", 1);
    EXPECT_EQ(Calls{"Can't find diag no such diag"}, log.texts(2));
    EXPECT_EQ(Calls{"SEDiagGetIndex(no such diag)"}, engine.calls());
}

TEST_F(IntegerDiag, WithAnIndexPastTheCatalogueCountsAsUnknown) {
    engine->add_diag("x", kInt16, 1, 3, 0, "");
    engine->set_reported_count(0);
    const ScopedLogCapture log;
    setIntegerDiag("x", 1);
    EXPECT_EQ(Calls{"Can't find diag x"}, log.texts(2));
    EXPECT_EQ(0, engine.count("SEDiagSetInt16"));
}

TEST_F(IntegerDiag, OfFloat32IsLoggedAndWritesNothing) {
    const ScopedLogCapture log;
    EXPECT_TRUE(set(kFloat32, 1).empty());
    EXPECT_EQ(Calls{"Unhandled type 7"}, log.texts(2));
}

TEST_F(IntegerDiag, OfAnyTypeButTheFourIsLoggedAndWritesNothing) {
    const int index = engine->add_diag("x", 0, 1, 3, 0, "");
    for (const int type : {0, 5, 6, 7, 8, 9, -1}) {
        const ScopedLogCapture log;
        engine->set_type(index, type);
        engine->clear_calls();
        setIntegerDiag("x", 1);
        EXPECT_EQ(Calls{"Unhandled type " + std::to_string(type)}, log.texts(2));
        EXPECT_EQ((Calls{"SEDiagGetIndex(x)", "SEDiagGetNumDiags()", "SEDiagGetType(0)", "SEDiagGetType(0)"}),
                  engine.calls());
    }
}

TEST_F(IntegerDiag, ThatIsNotSetIsReportedUnderTheWrappersTagAndSource) {
    const ScopedLogCapture log;
    setIntegerDiag("no such diag", 1);
    set(kFloat32, 1);
    ASSERT_EQ(2u, log.records().size());
    for (const quill::LogRecord& record : log.records()) {
        EXPECT_STREQ("se_wrapper", record.tag);
        EXPECT_STREQ("webrtc_common/se_wrapper", record.source);
    }
}

TEST_F(IntegerDiag, OfAnUnhandledTypeIsAskedForItsTypeASecondTime) {
    const ScopedLogCapture log;
    set(5, 1);
    EXPECT_EQ(Calls{"Unhandled type 5"}, log.texts(2));
    EXPECT_EQ(2, engine.count("SEDiagGetType"));
}

}  // namespace
