// An engine that does nothing and exports all that the table requires, with one oddity, which the build selects by one
// of the definitions below.
#include <dlfcn.h>

#define EXPORT extern "C" __attribute__((visibility("default")))

namespace {

using Routine = void (*)();

void routine() {}

// Gives back more references to this library than anybody has.
[[maybe_unused]] void closeItself() {
    Dl_info info;
    if (dladdr(reinterpret_cast<void*>(&routine), &info) == 0) return;
    void* const self = dlopen(info.dli_fname, RTLD_NOW | RTLD_NOLOAD);
    for (int i = 0; i < 8; ++i) dlclose(self);
}

}  // namespace

#define FUNCTION(name)   \
    EXPORT void* name(); \
    void* name() {       \
        return nullptr;  \
    }
#define HOOK(name)       \
    EXPORT Routine name; \
    Routine name = &routine;

#if defined(INIT_IS_A_VARIABLE)
EXPORT int MMIfInit;
int MMIfInit = 1;
#elif defined(INIT_IS_A_CONSTANT)
EXPORT const int MMIfInit;
const int MMIfInit = 1;
#elif defined(INIT_IS_CHOSEN)
using Init = void* (*)();
extern "C" Init chooseInit() {
    return [] { return static_cast<void*>(nullptr); };
}
EXPORT void* MMIfInit() __attribute__((ifunc("chooseInit")));
#else
FUNCTION(MMIfInit)
#endif

#if defined(HOOK_IS_A_FUNCTION)
FUNCTION(ComputeRFir)
#elif defined(HOOK_IS_A_CONSTANT)
EXPORT const Routine ComputeRFir;
const Routine ComputeRFir = &routine;
#elif defined(HOOK_IS_NULL_FOR_EVER)
EXPORT const Routine ComputeRFir;
const Routine ComputeRFir = nullptr;
#elif defined(HOOK_IS_SMALL)
EXPORT short ComputeRFir[2];
short ComputeRFir[2] = {1, 2};
#else
HOOK(ComputeRFir)
#endif

#if defined(OPTIONAL_IS_A_VARIABLE)
EXPORT int SEDiagGetHelp;
int SEDiagGetHelp = 1;
#endif

#if defined(DFT_HOOKS_ARE_FUNCTIONS)
FUNCTION(InitDftFcnHook)
FUNCTION(FwdDftFcnHook)
FUNCTION(InvDftFcnHook)
#endif

#if defined(CLOSES_ITSELF_AT_ONCE)
[[gnu::constructor]] static void closeAtOnce() {
    closeItself();
}
#endif

#if defined(CLOSES_ITSELF_LATER)
EXPORT void MMIfSetAutoLocationSearch();
void MMIfSetAutoLocationSearch() {
    closeItself();
}
#else
FUNCTION(MMIfSetAutoLocationSearch)
#endif

#if defined(NEEDS_A_LIBRARY)
extern "C" int libraryThatIsNeeded();
EXPORT int needsIt();
int needsIt() {
    return libraryThatIsNeeded();
}
#endif

#ifndef LACKS_THE_LAST_SYMBOL
FUNCTION(SEDiagGetName)
#endif

HOOK(AecConvolution)
HOOK(VCMul_i16)
HOOK(Interp1toNCore)
FUNCTION(RcvIfProcessReceivePath)
FUNCTION(MMIfSetReceivePathGainQ10)
FUNCTION(MMIfGetCurrentLocation)
FUNCTION(MMIfSetManualLocation)
FUNCTION(MMIfProcessMicrophones)
FUNCTION(MMIfGetVersionString)
FUNCTION(MMIfGetAecBypass)
FUNCTION(MMIfSetAecBypass)
FUNCTION(SEDiagGetInt16)
FUNCTION(SEDiagGetUInt16)
FUNCTION(SEDiagGetInt32)
FUNCTION(SEDiagGetUInt32)
FUNCTION(SEDiagGetInt40)
FUNCTION(SEDiagGetUInt40)
FUNCTION(SEDiagGetFloat32)
FUNCTION(SEDiagSetInt16)
FUNCTION(SEDiagSetUInt16)
FUNCTION(SEDiagSetInt32)
FUNCTION(SEDiagSetUInt32)
FUNCTION(SEDiagSetInt40)
FUNCTION(SEDiagSetUInt40)
FUNCTION(SEDiagSetFloat32)
FUNCTION(SEDiagGetInt16Array)
FUNCTION(SEDiagGetUInt16Array)
FUNCTION(SEDiagGetInt32Array)
FUNCTION(SEDiagGetUInt32Array)
FUNCTION(SEDiagGetInt40Array)
FUNCTION(SEDiagGetUInt40Array)
FUNCTION(SEDiagGetFloat32Array)
FUNCTION(SEDiagGet)
FUNCTION(SEDiagGetEnumAsInt)
FUNCTION(SEDiagGetEnumAsString)
FUNCTION(SEDiagGetIndex)
FUNCTION(SEDiagGetNumDiags)
FUNCTION(SEDiagSetEnumAsInt)
FUNCTION(SEDiagGetType)
FUNCTION(SEDiagGetLen)
FUNCTION(SEDiagGetRW)
