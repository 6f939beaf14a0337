// One build of the reference engine, loaded by path as a client loads it, with its entry points by name.
// A test process loads one build.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "reference_engine/engine_interface.h"
#include "reference_engine/format.h"
#include "tools/scene/scene.h"

namespace reference_engine_test {

inline constexpr size_t kBlock = reference_engine::kBlock;
inline constexpr size_t kMicrophones = 7;
inline constexpr int kLocations = 12;
inline constexpr size_t kReductionDelay = 320;          // samples, of the noise reduction
inline constexpr size_t kDelay = 75 + kReductionDelay;  // from the centre microphone to the output

enum class Build { kBeam, kDeviceModel };

const char* pathOf(Build build);
std::string nameOf(Build build);
inline void PrintTo(Build build, std::ostream* stream) {
    *stream << nameOf(build);
}
inline std::string nameOfParam(const testing::TestParamInfo<Build>& info) {
    return nameOf(info.param);
}
double arrayRadiusOf(Build build);
const char* receiveGainOf(Build build);

// Entry points, hooks included, under their first names.
#define REFERENCE_ENGINE_SYMBOLS(ROW)          \
    ROW(MMIfInit)                              \
    ROW(MMIfProcessMicrophones)                \
    ROW(RcvIfProcessReceivePath)               \
    ROW(MMIfSetReceivePathGainQ10)             \
    ROW(MMIfGetVersionString)                  \
    ROW(MMIfGetAecBypass)                      \
    ROW(MMIfSetAecBypass)                      \
    ROW(MMIfGetNoiseReductionBypass)           \
    ROW(MMIfSetNoiseReductionBypass)           \
    ROW(MMIfGetCurrentLocation)                \
    ROW(MMIfSetManualLocation)                 \
    ROW(MMIfSetAutoLocationSearch)             \
    ROW(MMIfLookInAllDirectionsIncludingRear)  \
    ROW(MMIfLookForwardRejectRearNoise)        \
    ROW(MMIfLookNarrowForwardRejectRearNoise)  \
    ROW(MMIfLookInOneDirectionRejectRearNoise) \
    ROW(MMIfStartNoiseTest)                    \
    ROW(MMIfNoiseTestIsRunning)                \
    ROW(MMIfGetNoiseTestResults)               \
    ROW(SEDiagGetNumDiags)                     \
    ROW(SEDiagGetIndex)                        \
    ROW(SEDiagGet)                             \
    ROW(SEDiagGetName)                         \
    ROW(SEDiagGetType)                         \
    ROW(SEDiagGetLen)                          \
    ROW(SEDiagGetRW)                           \
    ROW(SEDiagGetLevel)                        \
    ROW(SEDiagGetHelp)                         \
    ROW(SEDiagGetInt16)                        \
    ROW(SEDiagGetUInt16)                       \
    ROW(SEDiagGetInt32)                        \
    ROW(SEDiagGetUInt32)                       \
    ROW(SEDiagGetInt40)                        \
    ROW(SEDiagGetUInt40)                       \
    ROW(SEDiagGetFloat32)                      \
    ROW(SEDiagGetEnumAsInt)                    \
    ROW(SEDiagGetEnumAsString)                 \
    ROW(SEDiagSetInt16)                        \
    ROW(SEDiagSetUInt16)                       \
    ROW(SEDiagSetInt32)                        \
    ROW(SEDiagSetUInt32)                       \
    ROW(SEDiagSetInt40)                        \
    ROW(SEDiagSetUInt40)                       \
    ROW(SEDiagSetFloat32)                      \
    ROW(SEDiagSetEnumAsInt)                    \
    ROW(SEDiagGetInt16Array)                   \
    ROW(SEDiagGetUInt16Array)                  \
    ROW(SEDiagGetInt32Array)                   \
    ROW(SEDiagGetUInt32Array)                  \
    ROW(SEDiagGetInt40Array)                   \
    ROW(SEDiagGetUInt40Array)                  \
    ROW(SEDiagGetFloat32Array)                 \
    ROW(ComputeRFir)                           \
    ROW(AecConvolution)                        \
    ROW(VCMul_i16)                             \
    ROW(Interp1toNCore)                        \
    ROW(InitDftFcnHook)                        \
    ROW(FwdDftFcnHook)                         \
    ROW(InvDftFcnHook)

class EngineUnderTest {
  public:
    explicit EngineUnderTest(Build build);

#define DECLARE(name) decltype(&::name) name = nullptr;
    REFERENCE_ENGINE_SYMBOLS(DECLARE)
#undef DECLARE

    Build build() const {
        return build_;
    }

    // fails: the test, when there is no diagnostic of that name.
    int32_t diag(const char* name) const;

    // Runs the rows (full scale 1.0, or samples) through the microphone path, whole blocks only.
    std::vector<int16_t> process(const se_scene::MicrophoneRows& rows) const;
    std::vector<int16_t> process(const std::vector<std::vector<int16_t>>& rows) const;

    // The same samples at every microphone.
    std::vector<int16_t> processAlike(const std::vector<int16_t>& samples) const;

    int location() const;
    int confidence() const;

  private:
    Build build_;
    void* library_;
};

// A test for each build: the engine is loaded and initialised.
class EngineTest : public testing::TestWithParam<Build> {
  protected:
    EngineTest() : engine(GetParam()) { engine.MMIfInit(0); }
    EngineUnderTest engine;
};

}  // namespace reference_engine_test

#define INSTANTIATE_FOR_EACH_BUILD(suite)                                                                 \
    INSTANTIATE_TEST_SUITE_P(                                                                             \
        EachBuild, suite,                                                                                 \
        testing::Values(reference_engine_test::Build::kBeam, reference_engine_test::Build::kDeviceModel), \
        reference_engine_test::nameOfParam)
