// The engine's own routines, saved before others replace them.
#include "webrtc_common/se_wrapper/engine/saved_routines.h"

#include <gtest/gtest.h>

#include "tests/engines/test_engine.h"
#include "tests/webrtc_common/engine/bound_properties.h"
#include "webrtc_common/se_wrapper/engine/library_property.h"
#include "webrtc_common/se_wrapper/engine/load.h"
#include "webrtc_common/se_wrapper/table/engine_table.h"

using namespace quill::media::se_wrapper;
using quill::test::TestEngine;

namespace {

template <class Routine>
void* address(Routine routine) {
    return reinterpret_cast<void*>(routine);
}

class SavedRoutines : public testing::Test {
  protected:
    SavedRoutines() { p_signal_essence_library.node()->set<std::string>("test_engines/full"); }

    quill::test::BoundProperties properties_;
    TestEngine engine_;
};

TEST_F(SavedRoutines, AreNullBeforeAnEngineIsLoaded) {
    EXPECT_EQ(nullptr, interp1toNCore_SE);
    EXPECT_EQ(nullptr, aecConvolution_SE);
    EXPECT_EQ(nullptr, computeRFir_SE);
    EXPECT_EQ(nullptr, vcmul_i16_SE);
}

TEST_F(SavedRoutines, AreNotTouchedByOpeningTheLibrary) {
    openSignalEssenceDynamicLibrary("test_engines/full");
    EXPECT_EQ(nullptr, interp1toNCore_SE);
}

TEST_F(SavedRoutines, AreTheEnginesOwn) {
    initSignalEssenceOptimForTests();
    EXPECT_EQ(engine_->own_routine("Interp1toNCore"), address(interp1toNCore_SE));
    EXPECT_EQ(engine_->own_routine("AecConvolution"), address(aecConvolution_SE));
    EXPECT_EQ(engine_->own_routine("ComputeRFir"), address(computeRFir_SE));
    EXPECT_EQ(engine_->own_routine("VCMul_i16"), address(vcmul_i16_SE));
}

TEST_F(SavedRoutines, CanBeCalled) {
    initSignalEssenceOptimForTests();
    vcmul_i16_SE(nullptr, nullptr, nullptr, 0);
    EXPECT_EQ(1, engine_.count("own VCMul_i16"));
}

TEST_F(SavedRoutines, StayInTheHooksUntilOthersAreInstalled) {
    initSignalEssenceOptimForTests();
    for (const char* hook : {"Interp1toNCore", "AecConvolution", "ComputeRFir", "VCMul_i16", "InitDftFcnHook",
                             "FwdDftFcnHook", "InvDftFcnHook"}) {
        EXPECT_EQ(engine_->own_routine(hook), engine_->hook(hook)) << hook;
    }
}

}  // namespace
