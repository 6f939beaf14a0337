// An engine whose output shows what the host passes to it: the far-end block of the same 10 ms, times the
// receive gain, plus the echo safety factor. Its catalogue has unusual values: some are not finite, and one
// is beyond 32 bits. It does not depend on the wrapper.
#include <signal.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <limits>

#include "tests/engines/control.h"

#define EXPORT extern "C" __attribute__((visibility("default")))

namespace {

constexpr int kBlock = kTestEngineBlock;
constexpr int16_t kInterruptSample = 32123;

int16_t g_far_end[kBlock];
bool g_far_end_is_fresh = false;
uint16_t g_blocks = 0;
bool g_initialised = false;
int16_t g_settings[2] = {1024, 0};
uint16_t g_aec_bypass = 0;
float g_not_finite[] = {1.5F, std::numeric_limits<float>::infinity(),
                        std::numeric_limits<float>::quiet_NaN()};
int64_t g_large = 5000000000;

struct Diag {
    const char* name;
    int32_t type;
    int32_t length;
    int32_t access;
};

constexpr int32_t kInt16 = 1, kInt40 = 5, kFloat32 = 7;
constexpr int32_t kRead = 1, kReadWrite = 3;
constexpr Diag kDiags[] = {
    {"RcvGainQ10", kInt16, 1, kReadWrite},     {"EchoSafetyFactor", kInt16, 1, kReadWrite},
    {"not_a_number", kFloat32, 1, kReadWrite}, {"some_not_finite", kFloat32, 3, kRead},
    {"large", kInt40, 1, kReadWrite},
};

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

// Constant 1: there was no far-end block for this one; constant 2: the engine was not started. A certain
// first sample of the centre microphone causes an interruption.
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

EXPORT int32_t SEDiagGetNumDiags() {
    return std::size(kDiags);
}

EXPORT const char* SEDiagGetName(int32_t index) {
    return kDiags[index].name;
}

EXPORT int32_t SEDiagGetType(int32_t index) {
    return kDiags[index].type;
}

EXPORT int32_t SEDiagGetLen(int32_t index) {
    return kDiags[index].length;
}

EXPORT int32_t SEDiagGetRW(int32_t index) {
    return kDiags[index].access;
}

EXPORT int32_t SEDiagGetLevel(int32_t) {
    return 0;
}

EXPORT const char* SEDiagGetHelp(int32_t) {
    return "";
}

EXPORT int16_t SEDiagGetInt16(int32_t index) {
    return g_settings[index];
}

EXPORT float SEDiagGetFloat32(int32_t) {
    return std::numeric_limits<float>::quiet_NaN();
}

EXPORT float* SEDiagGetFloat32Array(int32_t) {
    return g_not_finite;
}

EXPORT int64_t SEDiagGetInt40(int32_t) {
    return g_large;
}

EXPORT void SEDiagSetInt40(int32_t, int64_t value) {
    g_large = value;
}

EXPORT uint16_t MMIfGetAecBypass() {
    return g_aec_bypass;
}

EXPORT void MMIfSetAecBypass(uint16_t bypass) {
    g_aec_bypass = bypass;
}

// Entry points that the wrapper must find, and that neither it nor the host calls at present.
#define UNUSED_FUNCTION(name) \
    EXPORT void name() {}
#define UNUSED_VALUE(type)           \
    UNUSED_FUNCTION(SEDiagGet##type) \
    UNUSED_FUNCTION(SEDiagSet##type) \
    UNUSED_FUNCTION(SEDiagGet##type##Array)

UNUSED_FUNCTION(SEDiagGetInt16Array)
UNUSED_VALUE(UInt16)
UNUSED_VALUE(Int32)
UNUSED_VALUE(UInt32)
UNUSED_FUNCTION(SEDiagGetInt40Array)
UNUSED_VALUE(UInt40)
UNUSED_FUNCTION(SEDiagSetFloat32)
UNUSED_FUNCTION(MMIfSetAutoLocationSearch)
UNUSED_FUNCTION(MMIfSetReceivePathGainQ10)
UNUSED_FUNCTION(MMIfSetManualLocation)
UNUSED_FUNCTION(SEDiagGet)
UNUSED_FUNCTION(SEDiagGetEnumAsInt)
UNUSED_FUNCTION(SEDiagGetEnumAsString)
UNUSED_FUNCTION(SEDiagSetEnumAsInt)

extern "C" {
__attribute__((visibility("default"))) void (*ComputeRFir)() = nullptr;
__attribute__((visibility("default"))) void (*AecConvolution)() = nullptr;
__attribute__((visibility("default"))) void (*VCMul_i16)() = nullptr;
__attribute__((visibility("default"))) void (*Interp1toNCore)() = nullptr;
}
