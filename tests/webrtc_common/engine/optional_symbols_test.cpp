// What an engine may leave out, each on its own.
#include <gtest/gtest.h>

#include "tests/support/log_capture.h"
#include "tests/webrtc_common/engine/engine_rows.h"
#include "webrtc_common/se_wrapper/diags/catalogue.h"
#include "webrtc_common/se_wrapper/engine/load.h"

using namespace quill::media::se_wrapper;
using namespace quill::media::se_wrapper::test;

namespace {

TEST(EngineWithoutTheNoiseReductionBypassGetter, LeavesThatPointerNullAndNoOther) {
    openSignalEssenceDynamicLibrary("test_engines/without_MMIfGetNoiseReductionBypass");
    EXPECT_EQ(nullptr, MMIfGetNoiseReductionBypass_Optional);
    EXPECT_NE(nullptr, MMIfSetNoiseReductionBypass_Optional);
}

TEST(EngineWithoutTheNoiseReductionBypassSetter, LeavesThatPointerNullAndNoOther) {
    openSignalEssenceDynamicLibrary("test_engines/without_MMIfSetNoiseReductionBypass");
    EXPECT_NE(nullptr, MMIfGetNoiseReductionBypass_Optional);
    EXPECT_EQ(nullptr, MMIfSetNoiseReductionBypass_Optional);
}

TEST(EngineWithoutSEDiagGetHelp, GetsTheDefaultForItAlone) {
    openSignalEssenceDynamicLibrary("test_engines/without_SEDiagGetHelp");
    EXPECT_EQ(&defaultSEDiagGetHelp, SEDiagGetHelp);
    EXPECT_NE(&defaultSEDiagGetLevel, SEDiagGetLevel);
}

TEST(EngineWithoutSEDiagGetLevel, GetsTheDefaultForItAlone) {
    openSignalEssenceDynamicLibrary("test_engines/without_SEDiagGetLevel");
    EXPECT_NE(&defaultSEDiagGetHelp, SEDiagGetHelp);
    EXPECT_EQ(&defaultSEDiagGetLevel, SEDiagGetLevel);
}

TEST(EngineWithoutSEDiagGetHelpAndSEDiagGetLevel, GetsBothDefaults) {
    openSignalEssenceDynamicLibrary("test_engines/without_SEDiagGetHelp_and_SEDiagGetLevel");
    EXPECT_EQ(&defaultSEDiagGetHelp, SEDiagGetHelp);
    EXPECT_EQ(&defaultSEDiagGetLevel, SEDiagGetLevel);
}

TEST(FullEngine, KeepsItsOwnHelpAndLevelQueries) {
    openSignalEssenceDynamicLibrary("test_engines/full");
    EXPECT_NE(&defaultSEDiagGetHelp, SEDiagGetHelp);
    EXPECT_NE(&defaultSEDiagGetLevel, SEDiagGetLevel);
}

TEST(MissingOptionalSymbols, AreNotReported) {
    const quill::test::ScopedLogCapture capture(5);
    openSignalEssenceDynamicLibrary("test_engines/minimal");
    EXPECT_EQ(std::vector<std::string>{"Successfully loaded Signal Essence Library. test_engine_1.0"},
              capture.texts());
}

class OptionalSlot : public testing::TestWithParam<std::size_t> {};

TEST_P(OptionalSlot, StaysNullWhenTheEngineExportsWhatItMustAndNoMore) {
    openSignalEssenceDynamicLibrary("test_engines/minimal");
    EXPECT_FALSE(isEngineRowPresent(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Every, OptionalSlot,
                         testing::ValuesIn(rowsOf({EngineRowKind::optional, EngineRowKind::direction,
                                                   EngineRowKind::noise_test, EngineRowKind::dft_hook})),
                         rowName);

class RequiredSlot : public testing::TestWithParam<std::size_t> {};

TEST_P(RequiredSlot, IsFilledWhenTheEngineExportsWhatItMustAndNoMore) {
    openSignalEssenceDynamicLibrary("test_engines/minimal");
    EXPECT_TRUE(isEngineRowPresent(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(Every, RequiredSlot, testing::ValuesIn(requiredRows()), rowName);

}  // namespace
