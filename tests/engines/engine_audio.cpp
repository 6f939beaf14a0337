// The scriptable engine's entry points apart from the diagnostics: start-up, blocks, location, bypasses,
// noise test.
#include <algorithm>

#include "tests/engines/engine_state.h"

using test_engine::kBlock;
using test_engine::kMicrophones;
using test_engine::orNull;
using test_engine::record;
using test_engine::state;

TEST_ENGINE_EXPORT void MMIfInit(uint16_t mode) {
    test_engine::noteHooksAtInit();
    record("MMIfInit", mode);
}

TEST_ENGINE_EXPORT const char* MMIfGetVersionString() {
    record("MMIfGetVersionString");
    return orNull(state().version.c_str());
}

TEST_ENGINE_EXPORT void RcvIfProcessReceivePath(const int16_t* in, int16_t* out) {
    record("RcvIfProcessReceivePath");
    std::copy_n(in, kBlock, out);
}

TEST_ENGINE_EXPORT void MMIfSetReceivePathGainQ10(int16_t gain) {
    record("MMIfSetReceivePathGainQ10", gain);
}

TEST_ENGINE_EXPORT void MMIfProcessMicrophones(int16_t* first, int16_t* others, int16_t* out) {
    record("MMIfProcessMicrophones");
    const auto address = [](const int16_t* p) { return reinterpret_cast<intptr_t>(p); };
    state().microphone_distance = (address(others) - address(first)) / intptr_t{sizeof(int16_t)};
    std::copy_n(first, kBlock, state().microphones);
    std::copy_n(others, (kMicrophones - 1) * kBlock, state().microphones + kBlock);
    std::copy_n(state().output, kBlock, out);
}

TEST_ENGINE_EXPORT void MMIfGetCurrentLocation(uint16_t* location, int16_t* confidence) {
    record("MMIfGetCurrentLocation");
    *location = state().location;
    *confidence = state().confidence;
}

TEST_ENGINE_EXPORT void MMIfSetManualLocation(int32_t location, int16_t confidence) {
    record("MMIfSetManualLocation", location, confidence);
}

TEST_ENGINE_EXPORT void MMIfSetAutoLocationSearch() {
    record("MMIfSetAutoLocationSearch");
}

TEST_ENGINE_EXPORT void MMIfLookInAllDirectionsIncludingRear() {
    record("MMIfLookInAllDirectionsIncludingRear");
}

TEST_ENGINE_EXPORT void MMIfLookForwardRejectRearNoise(float amount) {
    record("MMIfLookForwardRejectRearNoise", amount);
}

TEST_ENGINE_EXPORT void MMIfLookNarrowForwardRejectRearNoise(float amount) {
    record("MMIfLookNarrowForwardRejectRearNoise", amount);
}

TEST_ENGINE_EXPORT void MMIfLookInOneDirectionRejectRearNoise(int32_t location, float amount) {
    record("MMIfLookInOneDirectionRejectRearNoise", location, amount);
}

TEST_ENGINE_EXPORT uint16_t MMIfGetAecBypass() {
    record("MMIfGetAecBypass");
    return state().aec_bypass;
}

TEST_ENGINE_EXPORT void MMIfSetAecBypass(uint16_t bypass) {
    record("MMIfSetAecBypass", bypass);
    state().aec_bypass = bypass;
}

TEST_ENGINE_EXPORT uint32_t MMIfGetNoiseReductionBypass() {
    record("MMIfGetNoiseReductionBypass");
    return state().noise_reduction_bypass;
}

TEST_ENGINE_EXPORT void MMIfSetNoiseReductionBypass(uint16_t bypass) {
    record("MMIfSetNoiseReductionBypass", bypass);
    state().noise_reduction_bypass = bypass;
}

TEST_ENGINE_EXPORT void MMIfStartNoiseTest() {
    record("MMIfStartNoiseTest");
}

TEST_ENGINE_EXPORT float* MMIfGetNoiseTestResults() {
    record("MMIfGetNoiseTestResults");
    return orNull(state().noise_results);
}

TEST_ENGINE_EXPORT int MMIfNoiseTestIsRunning() {
    record("MMIfNoiseTestIsRunning");
    return state().noise_test_running ? 1 : 0;
}
