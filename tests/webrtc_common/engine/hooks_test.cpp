// The wrapper's routines in the engine's hook variables.
#include <gtest/gtest.h>

#include "tests/webrtc_common/engine/startable_engine.h"
#include "webrtc_common/se_wrapper.h"

using namespace quill::media::se_wrapper;
using quill::test::StartableEngine;
using quill::test::TestEngine;

namespace {

template <class Routine>
void* address(Routine routine) {
    return reinterpret_cast<void*>(routine);
}

// What the hooks held when the engine initialised itself.
void expectTheFourExactRoutinesIn(const TestEngine& engine) {
    EXPECT_EQ(address(&aecConvolution), engine->hook_at_init("AecConvolution"));
    EXPECT_EQ(address(&interp1ToNCore), engine->hook_at_init("Interp1toNCore"));
    EXPECT_EQ(address(&computeRFir), engine->hook_at_init("ComputeRFir"));
    EXPECT_EQ(address(&vcmul_i16), engine->hook_at_init("VCMul_i16"));
}

TEST(Hooks, HoldAllSevenRoutinesBeforeTheEngineInitialisesItself) {
    const StartableEngine started;
    initSignalEssence();
    expectTheFourExactRoutinesIn(started.engine);
    EXPECT_EQ(address(&initFFT), started.engine->hook_at_init("InitDftFcnHook"));
    EXPECT_EQ(address(&fwdFFT), started.engine->hook_at_init("FwdDftFcnHook"));
    EXPECT_EQ(address(&invFFT), started.engine->hook_at_init("InvDftFcnHook"));
}

TEST(EngineWithoutDftHooks, GetsTheFourOtherRoutinesAndKeepsItsOwnDft) {
    const StartableEngine started("test_engines/dft_hook_0");
    initSignalEssence();
    expectTheFourExactRoutinesIn(started.engine);
    for (const char* hook : {"InitDftFcnHook", "FwdDftFcnHook", "InvDftFcnHook"}) {
        EXPECT_EQ(started.engine->own_routine(hook), started.engine->hook_at_init(hook)) << hook;
    }
}

TEST(Hooks, AreReachedInAnEngineThatNamesThemDifferently) {
    const StartableEngine started("test_engines/with_VCMul_i16_FcnHook");
    initSignalEssence();
    EXPECT_EQ(address(&vcmul_i16), started.engine->hook_at_init("VCMul_i16_FcnHook"));
    EXPECT_EQ(started.engine->own_routine("VCMul_i16"), started.engine->hook_at_init("VCMul_i16"));
}

}  // namespace
