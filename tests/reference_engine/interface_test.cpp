// The exports of a build, and the queries outside the audio stages.
#include <cstdio>
#include <set>
#include <sstream>
#include <string>

#include "tests/reference_engine/engine_under_test.h"
#include "tests/reference_engine/signals.h"

using namespace reference_engine_test;

namespace {

using Names = std::set<std::string>;

Names words(const char* text) {
    std::istringstream stream(text);
    return {std::istream_iterator<std::string>(stream), {}};
}

const char kInBoth[] =
    "MMIfInit MMIfProcessMicrophones RcvIfProcessReceivePath MMIfSetReceivePathGainQ10 MMIfGetVersionString "
    "MMIfGetCurrentLocation MMIfSetManualLocation MMIfSetAutoLocationSearch MMIfGetAecBypass "
    "MMIfSetAecBypass "
    "MMIfGetNoiseReductionBypass MMIfSetNoiseReductionBypass MMIfStartNoiseTest MMIfNoiseTestIsRunning "
    "MMIfGetNoiseTestResults SEDiagGetNumDiags SEDiagGetIndex SEDiagGet SEDiagGetName SEDiagGetType "
    "SEDiagGetLen SEDiagGetRW SEDiagGetInt16 SEDiagGetUInt16 SEDiagGetInt32 SEDiagGetUInt32 SEDiagGetFloat32 "
    "SEDiagGetEnumAsInt SEDiagGetEnumAsString SEDiagSetInt16 SEDiagSetUInt16 SEDiagSetInt32 SEDiagSetUInt32 "
    "SEDiagSetFloat32 SEDiagSetEnumAsInt SEDiagGetInt16Array SEDiagGetUInt16Array SEDiagGetInt32Array "
    "SEDiagGetUInt32Array SEDiagGetFloat32Array InitDftFcnHook FwdDftFcnHook InvDftFcnHook ";

const char kInBeam[] =
    "MMIfLookInAllDirectionsIncludingRear MMIfLookForwardRejectRearNoise "
    "MMIfLookNarrowForwardRejectRearNoise "
    "MMIfLookInOneDirectionRejectRearNoise SEDiagGetLevel SEDiagGetHelp SEDiagGetInt40 SEDiagGetUInt40 "
    "SEDiagSetInt40 SEDiagSetUInt40 SEDiagGetInt40Array SEDiagGetUInt40Array ComputeRFir AecConvolution "
    "VCMul_i16 Interp1toNCore ";

const char kInDeviceModel[] =
    "SEDiagGetInt64 SEDiagGetUInt64 SEDiagSetInt64 SEDiagSetUInt64 SEDiagGetInt64Array SEDiagGetUInt64Array "
    "ComputeRFirFcnHook AecConvolutionFcnHook VCMul_i16_FcnHook Interp1toNCoreFcnHook ";

Names exportsOf(Build build) {
    FILE* listing = popen((std::string("nm -D --defined-only '") + pathOf(build) + "'").c_str(), "r");
    Names names;
    char address[64], kind[8], name[256];
    while (fscanf(listing, "%63s %7s %255s", address, kind, name) == 3) names.insert(name);
    pclose(listing);
    return names;
}

class Interface : public testing::TestWithParam<Build> {};
INSTANTIATE_FOR_EACH_BUILD(Interface);

}  // namespace

TEST_P(Interface, ExportsItsSymbolsAndNothingElse) {
    const bool beam = GetParam() == Build::kBeam;
    EXPECT_EQ(exportsOf(GetParam()),
              words((std::string(kInBoth) + (beam ? kInBeam : kInDeviceModel)).c_str()));
}

TEST_P(Interface, NamesTheBuildInItsVersion) {
    const EngineUnderTest engine(GetParam());
    EXPECT_STREQ(engine.MMIfGetVersionString(),
                 GetParam() == Build::kBeam ? "beam_1.14|reference" : "harbor_006|reference");
}

TEST(DeviceModelBuild, IsNewerThanTheOnesThatNeedAFixedDirection) {
    const EngineUnderTest engine(Build::kDeviceModel);
    EXPECT_GT(std::string(engine.MMIfGetVersionString()), "harbor_003.2");
}

TEST_P(Interface, GivesSilenceBeforeItIsInitialised) {
    const EngineUnderTest engine(GetParam());
    EXPECT_EQ(engine.processAlike(whiteNoise(320, -20, 1)), Samples(320, 0));
}

TEST_P(Interface, PassesTheFarEndBeforeItIsInitialised) {
    const EngineUnderTest engine(GetParam());
    const Samples far_end = whiteNoise(kBlock, -20, 1);
    Samples played(kBlock);
    engine.RcvIfProcessReceivePath(far_end.data(), played.data());
    EXPECT_EQ(played, far_end);
}

TEST_P(Interface, KeepsTheEchoBypass) {
    const EngineUnderTest engine(GetParam());
    engine.MMIfInit(0);
    EXPECT_EQ(engine.MMIfGetAecBypass(), 0);
    engine.MMIfSetAecBypass(7);
    EXPECT_EQ(engine.MMIfGetAecBypass(), 1);
}

TEST_P(Interface, KeepsTheNoiseReductionBypass) {
    const EngineUnderTest engine(GetParam());
    engine.MMIfInit(0);
    EXPECT_EQ(engine.MMIfGetNoiseReductionBypass(), 0);
    engine.MMIfSetNoiseReductionBypass(1);
    EXPECT_EQ(engine.MMIfGetNoiseReductionBypass(), 1);
}

TEST_P(Interface, StartsAfreshWhenInitialisedAgain) {
    const EngineUnderTest engine(GetParam());
    const Samples samples = whiteNoise(100 * kBlock, -30, 1);
    engine.MMIfInit(0);
    const Samples first = engine.processAlike(samples);
    engine.MMIfSetManualLocation(5, 100);
    engine.processAlike(samples);
    engine.MMIfInit(0);
    EXPECT_EQ(engine.processAlike(samples), first);
}
