// An engine without the level and help queries: its record of the diagnostic is read instead.
#include <gtest/gtest.h>

#include "tests/engines/test_engine.h"
#include "webrtc_common/se_wrapper/diags/catalogue.h"
#include "webrtc_common/se_wrapper/engine/load.h"
#include "webrtc_common/se_wrapper/table/engine_table.h"

using namespace quill::media::se_wrapper;
using quill::test::TestEngine;

namespace {

constexpr const char* kWithoutBoth = "test_engines/without_SEDiagGetHelp_and_SEDiagGetLevel";

TEST(DefaultLevel, IsTheRecordsLevel) {
    openSignalEssenceDynamicLibrary("test_engines/full");
    const TestEngine engine;
    const int index = engine->add_diag("x", 1, 1, 3, 0, "");
    engine->set_record(index, -1234567, "");
    EXPECT_EQ(-1234567, defaultSEDiagGetLevel(index));
}

TEST(DefaultHelp, IsTheRecordsHelpText) {
    openSignalEssenceDynamicLibrary("test_engines/full");
    const TestEngine engine;
    const int index = engine->add_diag("x", 1, 1, 3, 0, "the query's answer");
    engine->set_record(index, 0, "the record's text");
    EXPECT_STREQ("the record's text", defaultSEDiagGetHelp(index));
}

TEST(DefaultLevelAndHelp, AskTheEngineForTheRecordAndForNothingElse) {
    openSignalEssenceDynamicLibrary("test_engines/full");
    const TestEngine engine;
    engine->clear_calls();
    defaultSEDiagGetLevel(7);
    defaultSEDiagGetHelp(8);
    EXPECT_EQ((std::vector<std::string>{"SEDiagGet(7)", "SEDiagGet(8)"}), engine.calls());
}

TEST(EngineWithoutSEDiagGetLevel, HasEveryPathAtTheLevelOfTheRecord) {
    openSignalEssenceDynamicLibrary(kWithoutBoth);
    const TestEngine engine(kWithoutBoth);
    for (int level = 0; level < 4; ++level) {
        engine->set_record(engine->add_diag("x", 1, 1, 3, 3 - level, ""), level, "");
    }
    EXPECT_EQ("diags/basic/x", getDiagPropertyName(0));
    EXPECT_EQ("diags/intermediate/x", getDiagPropertyName(1));
    EXPECT_EQ("diags/advanced/x", getDiagPropertyName(2));
    EXPECT_EQ("diags/debug/x", getDiagPropertyName(3));
}

TEST(EngineWithoutSEDiagGetHelp, AnswersTheHelpQueryFromTheRecord) {
    openSignalEssenceDynamicLibrary(kWithoutBoth);
    const TestEngine engine(kWithoutBoth);
    engine->set_record(engine->add_diag("x", 1, 1, 3, 0, ""), 0, "the record's text");
    EXPECT_STREQ("the record's text", SEDiagGetHelp(0));
}

}  // namespace
