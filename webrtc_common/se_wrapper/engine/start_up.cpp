#include "webrtc_common/se_wrapper/engine/start_up.h"

#include <algorithm>
#include <string>
#include <vector>

#include "common/config.h"
#include "common/dynlib.h"
#include "webrtc_common/se_wrapper/diags/catalogue.h"
#include "webrtc_common/se_wrapper/engine/hooks.h"
#include "webrtc_common/se_wrapper/engine/integer_diag.h"
#include "webrtc_common/se_wrapper/engine/load.h"
#include "webrtc_common/se_wrapper/table/engine_answers.h"

namespace quill::media::se_wrapper {

int32_t g_diag_gain = 0;
int32_t g_diag_echo_safety_factor = 0;

namespace {

constexpr int16_t kUnityGainQ10 = 1024;

// The last version of the device model's engine whose location search does not find the talker there.
constexpr const char* kLastVersionWithFixedLocation = "harbor_003.2";

constexpr const char* kVersionWithNoiseFloorWeights = "suitable_1.12.4|local_build";

struct IntegerSetting {
    const char* diag;
    int value;
};

constexpr IntegerSetting kFixedLocation[] = {
    {"mmfx_bypass_location_search", 1},
    {"mmfx_force_location_index", 3},
    {"mmfx_force_location_confidence", 32767},
};

constexpr IntegerSetting kNoiseFloorWeights[] = {
    {"senr_nf_fullband_weight_factor_q10", 400},
    {"senr_nf_weight_factor_q10", 200},
};

template <size_t kCount>
void apply(const IntegerSetting (&settings)[kCount]) {
    for (const IntegerSetting& setting : settings) setIntegerDiag(setting.diag, setting.value);
}

void chooseLookDirection() {
    if (MMIfLookInAllDirectionsIncludingRear_Optional != nullptr) {
        MMIfLookInAllDirectionsIncludingRear_Optional();
    } else {
        MMIfSetAutoLocationSearch();
    }
}

void applyDeviceModelTuning() {
    const std::string version = engineVersion();
    if (p_config_is_harbor.get() && version <= kLastVersionWithFixedLocation) apply(kFixedLocation);
}

using Names = std::vector<std::string>;

// Engines differ in how they call a diagnostic; the first that one knows.
Names gainNames() {
    return {"RcvGainQ10", "sercv_gain_q10"};
}

Names echoSafetyFactorNames() {
    return {"senr_echo_safety_factor_q10", "senr_echo_safety_factor"};
}

bool knowsOneOf(const Names& names) {
    return std::any_of(names.begin(), names.end(),
                       [](const std::string& name) { return SEDiagGetIndex(name.c_str()) >= 0; });
}

void initialise() {
    initSignalEssenceOptimForTests();
    installHooks();
    MMIfInit(0);
}

void setUp() {
    g_diag_gain = getDiagIndexOrDie(gainNames());
    g_diag_echo_safety_factor = getDiagIndexOrDie(echoSafetyFactorNames());
    chooseLookDirection();
    MMIfSetReceivePathGainQ10(kUnityGainQ10);
    applyDeviceModelTuning();
}

}  // namespace

void initSignalEssence() {
    initialise();
    setUp();
}

std::string tryInitSignalEssence() {
    initialise();
    for (const Names& names : {gainNames(), echoSafetyFactorNames()}) {
        if (knowsOneOf(names)) continue;
        return "it knows no diagnostic " + join(names.begin(), names.end(), " or ");
    }
    setUp();
    return {};
}

void versionSpecificSettings() {
    const std::string version = engineVersion();
    if (version == kVersionWithNoiseFloorWeights) apply(kNoiseFloorWeights);
}

void setGain(int16_t gain) {
    SEDiagSetInt16(g_diag_gain, gain);
}

void setEchoSafetyFactor(int16_t factor) {
    SEDiagSetInt16(g_diag_echo_safety_factor, factor);
}

}  // namespace quill::media::se_wrapper
