// The look direction that start-up chooses.
#include <gtest/gtest.h>

#include "tests/webrtc_common/engine/startable_engine.h"
#include "webrtc_common/se_wrapper.h"

using namespace quill::media::se_wrapper;
using quill::test::StartableEngine;

namespace {

TEST(LookDirection, IsAllAroundWithBeamForming) {
    const StartableEngine started;
    initSignalEssence();
    EXPECT_EQ(1, started.engine.count("MMIfLookInAllDirectionsIncludingRear"));
    EXPECT_EQ(0, started.engine.count("MMIfSetAutoLocationSearch"));
}

TEST(LookDirection, IsSearchedByAnEngineWithoutBeamForming) {
    const StartableEngine started("test_engines/direction_0");
    initSignalEssence();
    EXPECT_EQ(1, started.engine.count("MMIfSetAutoLocationSearch"));
}

// The entry point itself decides, not the flag of its group.
TEST(LookDirection, GoesByTheEntryPointAlone) {
    const StartableEngine started;
    initSignalEssence();
    g_has_beam_forming = false;
    initSignalEssence();
    EXPECT_EQ(2, started.engine.count("MMIfLookInAllDirectionsIncludingRear"));
    g_has_beam_forming = true;
    MMIfLookInAllDirectionsIncludingRear_Optional = nullptr;
    initSignalEssence();
    EXPECT_EQ(1, started.engine.count("MMIfSetAutoLocationSearch"));
}

}  // namespace
