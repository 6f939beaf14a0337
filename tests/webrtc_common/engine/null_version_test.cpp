// An engine without a version text starts like any other; its version is "".
#include <gtest/gtest.h>

#include "tests/support/log_capture.h"
#include "tests/webrtc_common/engine/startable_engine.h"
#include "webrtc_common/se_wrapper.h"

using namespace quill::media::se_wrapper;
using quill::test::kInt16;
using quill::test::ScopedLogCapture;
using quill::test::StartableEngine;

namespace {

TEST(EngineWithoutAVersion, IsLoadedWithANoticeThatEndsWithTheText) {
    const StartableEngine started;
    started.engine->set_null_answers(true);
    const ScopedLogCapture log;
    initSignalEssenceOptimForTests();
    EXPECT_EQ(std::vector<std::string>{"Successfully loaded Signal Essence Library. "}, log.texts());
}

TEST(EngineWithoutAVersion, IsStartedToTheEnd) {
    const StartableEngine started;
    started.engine->set_null_answers(true);
    initSignalEssence();
    EXPECT_EQ(1, started.engine.count("MMIfSetReceivePathGainQ10"));
}

// "" comes before every other version.
TEST(EngineWithoutAVersion, CountsAsOldOnTheDeviceModel) {
    StartableEngine started;
    started.addLocationDiags();
    started.engine->set_null_answers(true);
    quill::p_config_is_harbor.node()->set<bool>(true);
    initSignalEssence();
    EXPECT_EQ(3, started.engine->integer(started.force_index));
}

TEST(EngineWithoutAVersion, GetsNoVersionSpecificSettings) {
    StartableEngine started;
    const int weight = started.add("senr_nf_weight_factor_q10", kInt16);
    started.engine->set_null_answers(true);
    initSignalEssence();
    versionSpecificSettings();
    EXPECT_EQ(0, started.engine->integer(weight));
}

}  // namespace
