// An engine that shows what the host does with it: its output is the far-end block that it was given for the
// same 10 ms, times the receive gain that was set, plus the echo safety factor. It knows nothing of the
// wrapper. Threads: one.
#include <signal.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

#define EXPORT extern "C" __attribute__((visibility("default")))

namespace {

constexpr int kBlock = 160;
constexpr int16_t kInterruptSample = 32123;

int16_t g_far_end[kBlock];
bool g_far_end_is_fresh = false;
uint16_t g_blocks = 0;
bool g_initialised = false;
int16_t g_settings[2] = {1024, 0};

}  // namespace

EXPORT void MMIfInit(uint16_t mode) {
    g_initialised = mode == 0;
}

EXPORT const char* MMIfGetVersionString() {
    return "probe\nengine";
}

EXPORT void RcvIfProcessReceivePath(const int16_t* in, int16_t* out) {
    std::copy_n(in, kBlock, g_far_end);
    std::copy_n(in, kBlock, out);
    g_far_end_is_fresh = true;
}

// Constant 1: no far-end block came for this one; constant 2: nobody started the engine. A recording asks for
// an interruption by a certain first sample of the centre microphone.
EXPORT void MMIfProcessMicrophones(int16_t* centre, int16_t*, int16_t* out) {
    if (centre[0] == kInterruptSample) raise(centre[1]);
    for (int i = 0; i < kBlock; ++i) {
        out[i] = static_cast<int16_t>(g_far_end[i] * g_settings[0] / 1024 + g_settings[1]);
    }
    if (!g_far_end_is_fresh) std::fill_n(out, kBlock, int16_t{1});
    if (!g_initialised) std::fill_n(out, kBlock, int16_t{2});
    g_far_end_is_fresh = false;
    ++g_blocks;
}

// Another location with every block: 1, 2, 3, ... with rising confidence.
EXPORT void MMIfGetCurrentLocation(uint16_t* location, int16_t* confidence) {
    *location = g_blocks;
    *confidence = static_cast<int16_t>(1000 * g_blocks);
}

// Diagnostic 0 is the receive gain, diagnostic 1 the echo safety factor.
EXPORT int32_t SEDiagGetIndex(const char* name) {
    return std::strcmp(name, "RcvGainQ10") == 0 ? 0 : 1;
}

EXPORT void SEDiagSetInt16(int32_t index, int16_t value) {
    g_settings[index] = value;
}

// What the wrapper must find, and neither it nor the host calls at present.
#define UNUSED_FUNCTION(name) \
    EXPORT void name() {}
#define UNUSED_VALUE(type)           \
    UNUSED_FUNCTION(SEDiagGet##type) \
    UNUSED_FUNCTION(SEDiagSet##type) \
    UNUSED_FUNCTION(SEDiagGet##type##Array)

UNUSED_FUNCTION(SEDiagGetInt16)
UNUSED_FUNCTION(SEDiagGetInt16Array)
UNUSED_VALUE(UInt16)
UNUSED_VALUE(Int32)
UNUSED_VALUE(UInt32)
UNUSED_VALUE(Int40)
UNUSED_VALUE(UInt40)
UNUSED_VALUE(Float32)
UNUSED_FUNCTION(MMIfSetAutoLocationSearch)
UNUSED_FUNCTION(MMIfSetReceivePathGainQ10)
UNUSED_FUNCTION(MMIfSetManualLocation)
UNUSED_FUNCTION(MMIfGetAecBypass)
UNUSED_FUNCTION(MMIfSetAecBypass)
UNUSED_FUNCTION(SEDiagGet)
UNUSED_FUNCTION(SEDiagGetEnumAsInt)
UNUSED_FUNCTION(SEDiagGetEnumAsString)
UNUSED_FUNCTION(SEDiagSetEnumAsInt)
UNUSED_FUNCTION(SEDiagGetNumDiags)
UNUSED_FUNCTION(SEDiagGetType)
UNUSED_FUNCTION(SEDiagGetLen)
UNUSED_FUNCTION(SEDiagGetRW)
UNUSED_FUNCTION(SEDiagGetName)

extern "C" {
__attribute__((visibility("default"))) void (*ComputeRFir)() = nullptr;
__attribute__((visibility("default"))) void (*AecConvolution)() = nullptr;
__attribute__((visibility("default"))) void (*VCMul_i16)() = nullptr;
__attribute__((visibility("default"))) void (*Interp1toNCore)() = nullptr;
}
