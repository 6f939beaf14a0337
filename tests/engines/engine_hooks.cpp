// The scriptable engine's hook variables and its own routines behind them. The routines compute nothing:
// a test recognises them by their address and by the call that they record.
#include <cstring>

#include "tests/engines/engine_state.h"

struct DftObj_t;

namespace {

using test_engine::record;

void ownComputeRFir(int16_t*, int16_t*, int16_t*, uint16_t, uint16_t, uint16_t) {
    record("own ComputeRFir");
}
void ownAecConvolution(int16_t*, int16_t*, int32_t*, int32_t, int32_t, int32_t, int32_t) {
    record("own AecConvolution");
}
void ownVCMul(int16_t*, int16_t*, int16_t*, uint16_t) {
    record("own VCMul_i16");
}
void ownInterp1toNCore(uint16_t, uint16_t, int16_t**, int16_t*, int16_t*, uint16_t) {
    record("own Interp1toNCore");
}
void ownInitDft(DftObj_t*, uint16_t, uint16_t) {
    record("own InitDft");
}
void ownFwdDft(DftObj_t*, int16_t*, uint16_t, uint16_t, int16_t*, uint16_t) {
    record("own FwdDft");
}
uint16_t ownInvDft(DftObj_t*, int16_t*, uint16_t, uint16_t, int16_t*, uint16_t) {
    record("own InvDft");
    return 0;
}

}  // namespace

// Name of the variable, the engine's own routine.
#define HOOKS(HOOK)                                \
    HOOK(ComputeRFir, ownComputeRFir)              \
    HOOK(ComputeRFirFcnHook, ownComputeRFir)       \
    HOOK(AecConvolution, ownAecConvolution)        \
    HOOK(AecConvolutionFcnHook, ownAecConvolution) \
    HOOK(VCMul_i16, ownVCMul)                      \
    HOOK(VCMul_i16_FcnHook, ownVCMul)              \
    HOOK(Interp1toNCore, ownInterp1toNCore)        \
    HOOK(Interp1toNCoreFcnHook, ownInterp1toNCore) \
    HOOK(InitDftFcnHook, ownInitDft)               \
    HOOK(FwdDftFcnHook, ownFwdDft)                 \
    HOOK(InvDftFcnHook, ownInvDft)

#define DEFINE(name, own)                     \
    TEST_ENGINE_EXPORT decltype(&(own)) name; \
    decltype(&(own)) name = &(own);
HOOKS(DEFINE)

namespace test_engine {
namespace {

struct Hook {
    const char* name;
    void* own;
    void* (*current)();
    void* at_init;
};

Hook hooks[] = {
#define ROW(name, own) \
    {#name, reinterpret_cast<void*>(&(own)), [] { return reinterpret_cast<void*>(name); }, nullptr},
    HOOKS(ROW)};

const Hook* find(const char* name) {
    for (const Hook& hook : hooks) {
        if (std::strcmp(hook.name, name) == 0) return &hook;
    }
    return nullptr;
}

}  // namespace

void* ownRoutine(const char* name) {
    const Hook* const hook = find(name);
    return hook == nullptr ? nullptr : hook->own;
}

void* currentRoutine(const char* name) {
    const Hook* const hook = find(name);
    return hook == nullptr ? nullptr : hook->current();
}

void* routineAtInit(const char* name) {
    const Hook* const hook = find(name);
    return hook == nullptr ? nullptr : hook->at_init;
}

void noteHooksAtInit() {
    for (Hook& hook : hooks) hook.at_init = hook.current();
}

}  // namespace test_engine
