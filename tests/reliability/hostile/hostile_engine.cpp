// An engine that misbehaves on request: SE_HOSTILE="STAGE DEED" names the call and what it does then; without it the
// engine is a correct one. It does not depend on the wrapper.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <limits>
#include <string>
#include <vector>

#include "tests/reliability/hostile/deeds.h"

#define EXPORT extern "C" __attribute__((visibility("default")))

using hostile::answers;
using hostile::at;

namespace {

constexpr int kBlock = 160;
constexpr size_t kVeryLong = 1 << 20;
constexpr const char* kControls = "\x1b[31mred\x1b[0m\n\x07\xc2\x9b";

enum Type : int32_t { kInt16 = 1, kUInt16, kInt32, kUInt32, kInt40, kUInt40, kFloat32, kEnum };

struct Diag {
    const char* name;
    int32_t type;
    int32_t length;
    int32_t access;
    double value;
};

constexpr int32_t kRead = 1, kReadWrite = 3;
Diag g_diags[] = {
    {"RcvGainQ10", kInt16, 1, kReadWrite, 1024}, {"senr_echo_safety_factor", kInt16, 1, kReadWrite, 0},
    {"int16", kInt16, 1, kReadWrite, -16},       {"uint16", kUInt16, 1, kReadWrite, 16},
    {"int32", kInt32, 1, kReadWrite, -32},       {"uint32", kUInt32, 1, kReadWrite, 32},
    {"int40", kInt40, 1, kReadWrite, -40},       {"uint40", kUInt40, 1, kReadWrite, 40},
    {"float32", kFloat32, 1, kReadWrite, 0.5},   {"enum", kEnum, 1, kReadWrite, 1},
    {"int16_array", kInt16, 3, kRead, 7},        {"float32_array", kFloat32, 3, kRead, 0.25},
};
constexpr int32_t kCount = std::size(g_diags);

Diag& diag(int32_t index) {
    static Diag none = {"none", 0, 1, 0, 0};
    return index >= 0 && index < kCount ? g_diags[index] : none;
}

// The wrapper needs the first two.
bool isFree(int32_t index) {
    return index >= 2;
}

// As many as the largest length that is answered and taken.
template <class T>
T* elements(int32_t index) {
    static std::vector<T> values(1000000);
    std::fill(values.begin(), values.end(), static_cast<T>(diag(index).value));
    if (answers("get-array", "nan") && std::is_floating_point_v<T>) values[1] = static_cast<T>(NAN);
    return answers("get-array", "null") ? nullptr : values.data();
}

const char* text(const char* stage, const char* usual) {
    static const std::string very_long(kVeryLong, 'x');
    at(stage);
    if (answers(stage, "null")) return nullptr;
    if (answers(stage, "empty")) return "";
    if (answers(stage, "controls")) return kControls;
    if (answers(stage, "bytes")) return "\xff\xfe\x80";
    if (answers(stage, "long")) return very_long.c_str();
    if (answers(stage, "path")) return "../a/b//c/";
    return usual;
}

int32_t number(const char* stage, int32_t usual) {
    at(stage);
    if (answers(stage, "zero")) return 0;
    if (answers(stage, "negative")) return -1;
    if (answers(stage, "lowest")) return std::numeric_limits<int32_t>::min();
    if (answers(stage, "highest")) return std::numeric_limits<int32_t>::max();
    if (answers(stage, "million")) return 1000000;
    return usual;
}

__attribute__((constructor)) void load() {
    hostile::noteCrashes();
    at("load");
}

__attribute__((destructor)) void unload() {
    at("unload");
}

int g_noise_blocks = -1;

}  // namespace

extern "C" {
__attribute__((visibility("default"))) void (*ComputeRFir)() = nullptr;
}

EXPORT const char* MMIfGetVersionString() {
    return text("version", "hostile_1.0");
}

// Stage "second": a run with the engine's own routines, which finds the hooks as they are.
EXPORT void MMIfInit(uint16_t) {
    at("init");
    if (ComputeRFir == nullptr) at("second");
}

EXPORT void RcvIfProcessReceivePath(const int16_t* in, int16_t* out) {
    at("receive");
    std::copy_n(in, kBlock, out);
}

EXPORT void MMIfProcessMicrophones(int16_t* centre, int16_t*, int16_t* out) {
    at("block");
    if (g_noise_blocks >= 0) ++g_noise_blocks;
    if (answers("block", "nothing")) return;
    std::copy_n(centre, kBlock, out);
    if (answers("block", "loud")) std::fill_n(out, kBlock, int16_t{-32768});
}

EXPORT void MMIfGetCurrentLocation(uint16_t* location, int16_t* confidence) {
    *location = static_cast<uint16_t>(number("location", 2));
    *confidence = static_cast<int16_t>(number("location", 16384));
}

EXPORT void MMIfStartNoiseTest() {
    at("noise-start");
    g_noise_blocks = 0;
}

EXPORT int32_t MMIfNoiseTestIsRunning() {
    return number("noise-running", g_noise_blocks < 3 ? 1 : 0);
}

EXPORT float* MMIfGetNoiseTestResults() {
    at("noise-results");
    static float results[180];
    std::fill(std::begin(results), std::end(results), answers("noise-results", "nan") ? NAN : -60.0F);
    return answers("noise-results", "null") ? nullptr : results;
}

EXPORT int32_t SEDiagGetIndex(const char* name) {
    const auto* const found = std::find_if(std::begin(g_diags), std::end(g_diags),
                                           [&](const Diag& one) { return std::strcmp(one.name, name) == 0; });
    return number("index", found == std::end(g_diags) ? -1 : static_cast<int32_t>(found - g_diags));
}

EXPORT int32_t SEDiagGetNumDiags() {
    return number("count", kCount);
}

EXPORT const char* SEDiagGetName(int32_t index) {
    at("name");
    if (answers("name", "same")) return "RcvGainQ10";
    return isFree(index) ? text("name", diag(index).name) : diag(index).name;
}

EXPORT const char* SEDiagGetHelp(int32_t) {
    return text("help", "a diagnostic");
}

EXPORT int32_t SEDiagGetType(int32_t index) {
    at("type");
    return isFree(index) ? number("type", diag(index).type) : diag(index).type;
}

EXPORT int32_t SEDiagGetLen(int32_t index) {
    at("length");
    return isFree(index) ? number("length", diag(index).length) : diag(index).length;
}

EXPORT int32_t SEDiagGetRW(int32_t index) {
    at("access");
    return isFree(index) ? number("access", diag(index).access) : diag(index).access;
}

EXPORT int32_t SEDiagGetLevel(int32_t) {
    return number("level", 0);
}

#define DIAG_TYPE(Name, T)                                                                  \
    EXPORT T SEDiagGet##Name(int32_t index) {                                               \
        at("get");                                                                          \
        if (answers("get", "nan"))                                                          \
            return static_cast<T>(0) / static_cast<T>(std::is_floating_point_v<T> ? 0 : 1); \
        return static_cast<T>(diag(index).value);                                           \
    }                                                                                       \
    EXPORT void SEDiagSet##Name(int32_t index, T value) {                                   \
        at("set");                                                                          \
        if (answers("set", "nothing")) return;                                              \
        diag(index).value = static_cast<double>(value);                                     \
    }                                                                                       \
    EXPORT T* SEDiagGet##Name##Array(int32_t index) {                                       \
        at("get-array");                                                                    \
        return elements<T>(index);                                                          \
    }

DIAG_TYPE(Int16, int16_t)
DIAG_TYPE(UInt16, uint16_t)
DIAG_TYPE(Int32, int32_t)
DIAG_TYPE(UInt32, uint32_t)
DIAG_TYPE(Int40, long long)
DIAG_TYPE(UInt40, unsigned long long)
DIAG_TYPE(Float32, float)

EXPORT int32_t SEDiagGetEnumAsInt(int32_t index) {
    return number("get-enum", static_cast<int32_t>(diag(index).value));
}

EXPORT const char* SEDiagGetEnumAsString(int32_t) {
    return text("label", "narrow");
}

EXPORT void SEDiagSetEnumAsInt(int32_t index, int32_t value) {
    at("set");
    diag(index).value = value;
}

EXPORT void* SEDiagGet(int32_t) {
    return nullptr;
}

EXPORT uint16_t MMIfGetAecBypass() {
    return static_cast<uint16_t>(number("get-bypass", 0));
}

EXPORT void MMIfSetAecBypass(uint16_t) {
    at("set-bypass");
}

EXPORT void MMIfSetAutoLocationSearch() {}
EXPORT void MMIfSetReceivePathGainQ10(int16_t) {
    at("gain");
}
EXPORT void MMIfSetManualLocation(int32_t, int16_t) {}

extern "C" {
__attribute__((visibility("default"))) void (*AecConvolution)() = nullptr;
__attribute__((visibility("default"))) void (*VCMul_i16)() = nullptr;
__attribute__((visibility("default"))) void (*Interp1toNCore)() = nullptr;
}
