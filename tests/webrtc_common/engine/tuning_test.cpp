// Tuning by device model and by engine version.
#include <gtest/gtest.h>

#include "tests/support/log_capture.h"
#include "tests/webrtc_common/engine/startable_engine.h"
#include "webrtc_common/se_wrapper.h"

using namespace quill::media::se_wrapper;
using quill::test::kFloat32;
using quill::test::kInt16;
using quill::test::ScopedLogCapture;
using quill::test::StartableEngine;

namespace {

// The location diagnostics after a start with this device model and engine version.
struct Locations {
    Locations(bool is_harbor, const char* version) {
        started.addLocationDiags();
        started.engine->set_version(version);
        quill::p_config_is_harbor.node()->set<bool>(is_harbor);
        initSignalEssence();
    }
    bool fixed() const {
        return started.engine->integer(started.bypass_search) == 1 &&
               started.engine->integer(started.force_index) == 3 &&
               started.engine->integer(started.force_confidence) == 32767;
    }
    bool untouched() const {
        return started.engine->integer(started.bypass_search) == 0 &&
               started.engine->integer(started.force_index) == 0 &&
               started.engine->integer(started.force_confidence) == 0;
    }
    StartableEngine started;
};

TEST(DeviceModel, WithVersionHarbor003_1HasItsLocationFixed) {
    EXPECT_TRUE(Locations(true, "harbor_003.1").fixed());
}

TEST(DeviceModel, WithVersionHarbor003_2ItselfHasItsLocationFixed) {
    EXPECT_TRUE(Locations(true, "harbor_003.2").fixed());
}

TEST(DeviceModel, WithVersionHarbor003_3SearchesItsLocation) {
    EXPECT_TRUE(Locations(true, "harbor_003.3").untouched());
}

TEST(DeviceModel, WithVersionHarbor004_0SearchesItsLocation) {
    EXPECT_TRUE(Locations(true, "harbor_004.0").untouched());
}

TEST(DeviceModel, ComparesVersionsAsWholeTexts) {
    EXPECT_TRUE(Locations(true, "harbor_003.2|local_build").untouched());
}

TEST(DeviceModel, CountsAPrefixOfTheVersionAsOlder) {
    EXPECT_TRUE(Locations(true, "harbor_003").fixed());
}

TEST(DeviceModel, CountsAVersionThatDiffersByASmallerByteAsOlder) {
    EXPECT_TRUE(Locations(true, "beam_9.9").fixed());
}

TEST(DeviceModel, ComparesBytesAsUnsignedNumbers) {
    EXPECT_TRUE(Locations(true, "harbor_003.\xe9").untouched());
}

TEST(OtherDevices, SearchTheirLocationWithAnyVersion) {
    EXPECT_TRUE(Locations(false, "harbor_003.1").untouched());
}

TEST(DeviceModel, WithoutTheLocationDiagsStartsAndReportsWhatIsMissing) {
    const StartableEngine started;
    started.engine->set_version("harbor_003.1");
    quill::p_config_is_harbor.node()->set<bool>(true);
    const ScopedLogCapture log;
    initSignalEssence();
    const std::vector<std::string> expected = {"Can't find diag mmfx_bypass_location_search",
                                               "Can't find diag mmfx_force_location_index",
                                               "Can't find diag mmfx_force_location_confidence"};
    EXPECT_EQ(expected, log.texts(2));
}

// The engine calls of versionSpecificSettings with an engine of this version.
std::vector<std::string> settingCalls(const char* version) {
    StartableEngine started;
    const int fullband = started.add("senr_nf_fullband_weight_factor_q10", kInt16);
    const int weight = started.add("senr_nf_weight_factor_q10", kInt16);
    EXPECT_EQ(3, fullband);
    EXPECT_EQ(4, weight);
    started.engine->set_version(version);
    initSignalEssence();
    started.engine->clear_calls();
    versionSpecificSettings();
    return started.engine.calls("SEDiagSetInt16");
}

TEST(VersionSpecificSettings, SetTheNoiseFloorWeightsOfTheOneVersion) {
    const std::vector<std::string> expected = {"SEDiagSetInt16(3, 400)", "SEDiagSetInt16(4, 200)"};
    EXPECT_EQ(expected, settingCalls("suitable_1.12.4|local_build"));
}

TEST(VersionSpecificSettings, ChangeNothingForThatVersionFollowedByABlank) {
    EXPECT_TRUE(settingCalls("suitable_1.12.4|local_build ").empty());
}

TEST(VersionSpecificSettings, AreNotPartOfStartUp) {
    StartableEngine started;
    const int weight = started.add("senr_nf_weight_factor_q10", kInt16);
    started.engine->set_version("suitable_1.12.4|local_build");
    initSignalEssence();
    EXPECT_EQ(0, started.engine->integer(weight));
}

}  // namespace
