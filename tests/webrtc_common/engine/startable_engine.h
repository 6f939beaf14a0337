// A scriptable engine with the diagnostics that start-up looks for, chosen by the library property.
#pragma once

#include <string>

#include "common/config.h"
#include "tests/engines/test_engine.h"
#include "tests/webrtc_common/engine/bound_properties.h"
#include "webrtc_common/se_wrapper/engine/library_property.h"

namespace quill::test {

inline constexpr int kInt16 = 1;
inline constexpr int kInt32 = 2;
inline constexpr int kUInt16 = 3;
inline constexpr int kUInt32 = 4;
inline constexpr int kFloat32 = 7;
inline constexpr int kReadWrite = 3;

struct StartableEngine {
    explicit StartableEngine(const std::string& build = "test_engines/full",
                             const char* gain_name = "RcvGainQ10",
                             const char* echo_safety_name = "senr_echo_safety_factor_q10")
        : engine(build) {
        media::se_wrapper::p_signal_essence_library.node()->set<std::string>(build);
        other = add("other", kInt16);
        gain = add(gain_name, kInt16);
        echo_safety_factor = add(echo_safety_name, kInt16);
    }

    int add(const char* name, int type) { return engine->add_diag(name, type, 1, kReadWrite, 0, ""); }

    void addLocationDiags() {
        bypass_search = add("mmfx_bypass_location_search", kInt16);
        force_index = add("mmfx_force_location_index", kInt32);
        force_confidence = add("mmfx_force_location_confidence", kUInt16);
    }

    BoundProperties properties;
    TestEngine engine;
    int other = 0;
    int gain = 0;
    int echo_safety_factor = 0;
    int bypass_search = 0;
    int force_index = 0;
    int force_confidence = 0;
};

}  // namespace quill::test
