// The interface table as data: what is resolved, under which names, in which order.
#include "webrtc_common/se_wrapper/table/engine_table.h"

#include <gtest/gtest.h>

#include <string>

using namespace quill::media::se_wrapper;

namespace {

// The engine's interface, stated a second time.
constexpr EngineRow kExpected[] = {
    {"MMIfSetAutoLocationSearch", EngineRowKind::mandatory, {"MMIfSetAutoLocationSearch"}},
    {"MMIfInit", EngineRowKind::mandatory, {"MMIfInit"}},
    {"RcvIfProcessReceivePath", EngineRowKind::mandatory, {"RcvIfProcessReceivePath"}},
    {"MMIfSetReceivePathGainQ10", EngineRowKind::mandatory, {"MMIfSetReceivePathGainQ10"}},
    {"MMIfGetCurrentLocation", EngineRowKind::mandatory, {"MMIfGetCurrentLocation"}},
    {"MMIfSetManualLocation", EngineRowKind::mandatory, {"MMIfSetManualLocation"}},
    {"MMIfLookInAllDirectionsIncludingRear_Optional",
     EngineRowKind::direction,
     {"MMIfLookInAllDirectionsIncludingRear"}},
    {"MMIfLookForwardRejectRearNoise_Optional", EngineRowKind::direction, {"MMIfLookForwardRejectRearNoise"}},
    {"MMIfLookNarrowForwardRejectRearNoise_Optional",
     EngineRowKind::direction,
     {"MMIfLookNarrowForwardRejectRearNoise"}},
    {"MMIfLookInOneDirectionRejectRearNoise_Optional",
     EngineRowKind::direction,
     {"MMIfLookInOneDirectionRejectRearNoise"}},
    {"MMIfProcessMicrophones", EngineRowKind::mandatory, {"MMIfProcessMicrophones"}},
    {"MMIfGetVersionString", EngineRowKind::mandatory, {"MMIfGetVersionString"}},
    {"MMIfGetAecBypass", EngineRowKind::mandatory, {"MMIfGetAecBypass"}},
    {"MMIfSetAecBypass", EngineRowKind::mandatory, {"MMIfSetAecBypass"}},
    {"MMIfGetNoiseReductionBypass_Optional", EngineRowKind::optional, {"MMIfGetNoiseReductionBypass"}},
    {"MMIfSetNoiseReductionBypass_Optional", EngineRowKind::optional, {"MMIfSetNoiseReductionBypass"}},
    {"MMIfStartNoiseTest_Optional", EngineRowKind::noise_test, {"MMIfStartNoiseTest"}},
    {"MMIfGetNoiseTestResults_Optional", EngineRowKind::noise_test, {"MMIfGetNoiseTestResults"}},
    {"MMIfNoiseTestIsRunning_Optional", EngineRowKind::noise_test, {"MMIfNoiseTestIsRunning"}},
    {"SEDiagGetInt16", EngineRowKind::mandatory, {"SEDiagGetInt16"}},
    {"SEDiagGetUInt16", EngineRowKind::mandatory, {"SEDiagGetUInt16"}},
    {"SEDiagGetInt32", EngineRowKind::mandatory, {"SEDiagGetInt32"}},
    {"SEDiagGetUInt32", EngineRowKind::mandatory, {"SEDiagGetUInt32"}},
    {"SEDiagGetInt40", EngineRowKind::alternatives, {"SEDiagGetInt40", "SEDiagGetInt64"}},
    {"SEDiagGetUInt40", EngineRowKind::alternatives, {"SEDiagGetUInt40", "SEDiagGetUInt64"}},
    {"SEDiagGetFloat32", EngineRowKind::mandatory, {"SEDiagGetFloat32"}},
    {"SEDiagSetInt16", EngineRowKind::mandatory, {"SEDiagSetInt16"}},
    {"SEDiagSetUInt16", EngineRowKind::mandatory, {"SEDiagSetUInt16"}},
    {"SEDiagSetInt32", EngineRowKind::mandatory, {"SEDiagSetInt32"}},
    {"SEDiagSetUInt32", EngineRowKind::mandatory, {"SEDiagSetUInt32"}},
    {"SEDiagSetInt40", EngineRowKind::alternatives, {"SEDiagSetInt40", "SEDiagSetInt64"}},
    {"SEDiagSetUInt40", EngineRowKind::alternatives, {"SEDiagSetUInt40", "SEDiagSetUInt64"}},
    {"SEDiagSetFloat32", EngineRowKind::mandatory, {"SEDiagSetFloat32"}},
    {"SEDiagGetInt16Array", EngineRowKind::mandatory, {"SEDiagGetInt16Array"}},
    {"SEDiagGetUInt16Array", EngineRowKind::mandatory, {"SEDiagGetUInt16Array"}},
    {"SEDiagGetInt32Array", EngineRowKind::mandatory, {"SEDiagGetInt32Array"}},
    {"SEDiagGetUInt32Array", EngineRowKind::mandatory, {"SEDiagGetUInt32Array"}},
    {"SEDiagGetInt40Array", EngineRowKind::alternatives, {"SEDiagGetInt40Array", "SEDiagGetInt64Array"}},
    {"SEDiagGetUInt40Array", EngineRowKind::alternatives, {"SEDiagGetUInt40Array", "SEDiagGetUInt64Array"}},
    {"SEDiagGetFloat32Array", EngineRowKind::mandatory, {"SEDiagGetFloat32Array"}},
    {"SEDiagGet", EngineRowKind::mandatory, {"SEDiagGet"}},
    {"SEDiagGetEnumAsInt", EngineRowKind::mandatory, {"SEDiagGetEnumAsInt"}},
    {"SEDiagGetEnumAsString", EngineRowKind::mandatory, {"SEDiagGetEnumAsString"}},
    {"SEDiagGetIndex", EngineRowKind::mandatory, {"SEDiagGetIndex"}},
    {"SEDiagGetNumDiags", EngineRowKind::mandatory, {"SEDiagGetNumDiags"}},
    {"SEDiagSetEnumAsInt", EngineRowKind::mandatory, {"SEDiagSetEnumAsInt"}},
    {"ComputeRFir_FcnHook", EngineRowKind::hook, {"ComputeRFir", "ComputeRFirFcnHook"}},
    {"AecConvolution_FcnHook", EngineRowKind::hook, {"AecConvolution", "AecConvolutionFcnHook"}},
    {"VCMul_i16_FcnHook", EngineRowKind::hook, {"VCMul_i16", "VCMul_i16_FcnHook"}},
    {"Interp1toNCore_FcnHook", EngineRowKind::hook, {"Interp1toNCore", "Interp1toNCoreFcnHook"}},
    {"InitDft_FcnHook", EngineRowKind::dft_hook, {"InitDftFcnHook"}},
    {"FwdDft_FcnHook", EngineRowKind::dft_hook, {"FwdDftFcnHook"}},
    {"InvDft_FcnHook", EngineRowKind::dft_hook, {"InvDftFcnHook"}},
    {"SEDiagGetType", EngineRowKind::mandatory, {"SEDiagGetType"}},
    {"SEDiagGetLen", EngineRowKind::mandatory, {"SEDiagGetLen"}},
    {"SEDiagGetHelp", EngineRowKind::defaulted, {"SEDiagGetHelp"}},
    {"SEDiagGetRW", EngineRowKind::mandatory, {"SEDiagGetRW"}},
    {"SEDiagGetLevel", EngineRowKind::defaulted, {"SEDiagGetLevel"}},
    {"SEDiagGetName", EngineRowKind::mandatory, {"SEDiagGetName"}},
};

class EngineTableRow : public testing::TestWithParam<std::size_t> {};

TEST_P(EngineTableRow, HasItsPlaceItsNamesAndItsKind) {
    const EngineRow& expected = kExpected[GetParam()];
    const EngineRow& row = kEngineRows[GetParam()];
    EXPECT_STREQ(expected.variable, row.variable);
    EXPECT_EQ(expected.kind, row.kind);
    EXPECT_STREQ(expected.symbols[0], row.symbols[0]);
    EXPECT_STREQ(expected.symbols[1], row.symbols[1]);
}

TEST_P(EngineTableRow, IsNullBeforeAnEngineIsLoaded) {
    EXPECT_FALSE(isEngineRowPresent(GetParam()));
}

INSTANTIATE_TEST_SUITE_P(All, EngineTableRow, testing::Range(std::size_t{0}, std::size(kExpected)),
                         [](const auto& row) { return std::string(kExpected[row.param].variable); });

TEST(EngineTable, HasTheRowsThatAreStatedHereAndNoOthers) {
    EXPECT_EQ(std::size(kExpected), kNumEngineRows);
}

TEST(EngineTable, CountsNoRowOfAnyKindBeforeAnEngineIsLoaded) {
    EXPECT_EQ(0, countPresentEngineRows(EngineRowKind::mandatory));
    EXPECT_EQ(0, countPresentEngineRows(EngineRowKind::direction));
    EXPECT_EQ(0, countPresentEngineRows(EngineRowKind::defaulted));
}

TEST(RowKind, IsRequiredWhereStartUpStopsWithoutTheSymbol) {
    for (const EngineRowKind kind :
         {EngineRowKind::mandatory, EngineRowKind::alternatives, EngineRowKind::hook})
        EXPECT_TRUE(isRequired(kind));
    for (const EngineRowKind kind :
         {EngineRowKind::optional, EngineRowKind::direction, EngineRowKind::noise_test,
          EngineRowKind::dft_hook, EngineRowKind::defaulted})
        EXPECT_FALSE(isRequired(kind));
}

TEST(CapabilityFlags, AreFalseBeforeAnEngineIsLoaded) {
    EXPECT_FALSE(g_has_beam_forming);
    EXPECT_FALSE(g_has_noise_tests);
}

}  // namespace
