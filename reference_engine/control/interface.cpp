// The audio half of the C interface.
#include <algorithm>
#include <cmath>

#include "reference_engine/build.h"
#include "reference_engine/control/engine.h"
#include "reference_engine/engine_interface.h"

using namespace reference_engine;

namespace {

constexpr float kLargestRejection = 40;  // dB

// Every sector ends a manual location.
void lookInto(LookMode mode, float rejection_db) {
    g_settings.bypass_location_search = 0;
    g_settings.look_mode = mode;
    g_settings.rear_rejection_db =
        std::isnan(rejection_db) ? 0 : std::clamp(rejection_db, 0.0f, kLargestRejection);
}

}  // namespace

void MMIfInit(uint16_t /*mode*/) {
    g_engine.init();
}

void MMIfProcessMicrophones(int16_t* centre, int16_t* circle, int16_t* out) {
    g_engine.processMicrophones(centre, circle, out);
}

void RcvIfProcessReceivePath(const int16_t* in, int16_t* out) {
    g_engine.processReceivePath(in, out);
}

void MMIfSetReceivePathGainQ10(int16_t gain) {
    g_settings.receive_gain_q10 = std::max<int16_t>(gain, 0);
}

const char* MMIfGetVersionString() {
    return kVersion;
}

uint16_t MMIfGetAecBypass() {
    return g_settings.aec_bypass;
}
void MMIfSetAecBypass(uint16_t bypass) {
    g_settings.aec_bypass = bypass != 0;
}

uint16_t MMIfGetNoiseReductionBypass() {
    return g_settings.noise_reduction_bypass;
}
void MMIfSetNoiseReductionBypass(uint16_t bypass) {
    g_settings.noise_reduction_bypass = bypass != 0;
}

void MMIfGetCurrentLocation(uint16_t* location, int16_t* confidence) {
    *location = g_readings.location;
    *confidence = g_readings.confidence;
}

void MMIfSetManualLocation(int32_t location, int16_t confidence) {
    g_settings.force_location_index = static_cast<int16_t>(std::clamp(location, 0, kLocations - 1));
    g_settings.force_location_confidence = std::max<int16_t>(confidence, 0);
    g_settings.bypass_location_search = 1;
}

void MMIfSetAutoLocationSearch() {
    g_settings.bypass_location_search = 0;
}

void MMIfLookInAllDirectionsIncludingRear() {
    lookInto(kAllDirections, 0);
}
void MMIfLookForwardRejectRearNoise(float rejection_db) {
    lookInto(kForward, rejection_db);
}
void MMIfLookNarrowForwardRejectRearNoise(float rejection_db) {
    lookInto(kNarrowForward, rejection_db);
}
void MMIfLookInOneDirectionRejectRearNoise(float rejection_db) {
    lookInto(kOneDirection, rejection_db);
}

void MMIfStartNoiseTest() {
    g_engine.startNoiseTest();
}
int32_t MMIfNoiseTestIsRunning() {
    return g_readings.noise_test_state == NoiseTest::kRunning;
}
NoiseTestRecord* MMIfGetNoiseTestResults() {
    return &g_readings.noise_test;
}
