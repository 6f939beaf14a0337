#include "tests/reference_engine/engine_under_test.h"

#include <dlfcn.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iterator>

namespace reference_engine_test {
namespace {

// The device-model build's names of some symbols.
std::string laterName(const std::string& name) {
    const size_t forty = name.find("Int40");
    if (forty != std::string::npos) return std::string(name).replace(forty, 5, "Int64");
    return name == "VCMul_i16" ? "VCMul_i16_FcnHook" : name + "FcnHook";
}

void* open(Build build) {
    void* library = dlopen(pathOf(build), RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        ADD_FAILURE() << dlerror();
        std::abort();
    }
    return library;
}

void* find(void* library, const char* name) {
    void* symbol = dlsym(library, name);
    return symbol != nullptr ? symbol : dlsym(library, laterName(name).c_str());
}

int16_t sampleOf(float value) {
    return static_cast<int16_t>(std::clamp(std::lround(value * 32768), -32768L, 32767L));
}

}  // namespace

const char* pathOf(Build build) {
    return build == Build::kBeam ? REFERENCE_ENGINE_BEAM : REFERENCE_ENGINE_DEVICE_MODEL;
}

std::string nameOf(Build build) {
    return build == Build::kBeam ? "Beam" : "DeviceModel";
}
double arrayRadiusOf(Build build) {
    return build == Build::kBeam ? 0.0425 : 0.035;
}
const char* receiveGainOf(Build build) {
    return build == Build::kBeam ? "RcvGainQ10" : "sercv_gain_q10";
}

EngineUnderTest::EngineUnderTest(Build build) : build_(build), library_(open(build)) {
#define RESOLVE(symbol) symbol = reinterpret_cast<decltype(symbol)>(find(library_, #symbol));
    REFERENCE_ENGINE_SYMBOLS(RESOLVE)
#undef RESOLVE
}

int32_t EngineUnderTest::diag(const char* name) const {
    const int32_t index = SEDiagGetIndex(name);
    EXPECT_GE(index, 0) << name;
    return index;
}

std::vector<int16_t> EngineUnderTest::process(const std::vector<std::vector<int16_t>>& rows) const {
    std::vector<int16_t> out(rows[0].size() / kBlock * kBlock);
    int16_t block[kMicrophones][kBlock];
    for (size_t start = 0; start < out.size(); start += kBlock) {
        for (size_t m = 0; m < kMicrophones; ++m) std::copy_n(rows[m].data() + start, kBlock, block[m]);
        MMIfProcessMicrophones(block[0], block[1], out.data() + start);
    }
    return out;
}

std::vector<int16_t> EngineUnderTest::process(const se_scene::MicrophoneRows& rows) const {
    std::vector<std::vector<int16_t>> samples(rows.size());
    for (size_t m = 0; m < rows.size(); ++m) {
        std::transform(rows[m].begin(), rows[m].end(), std::back_inserter(samples[m]), sampleOf);
    }
    return process(samples);
}

std::vector<int16_t> EngineUnderTest::processAlike(const std::vector<int16_t>& samples) const {
    return process(std::vector<std::vector<int16_t>>(kMicrophones, samples));
}

int EngineUnderTest::location() const {
    uint16_t location = 0xFFFF;
    int16_t confidence = 0;
    MMIfGetCurrentLocation(&location, &confidence);
    return location;
}

int EngineUnderTest::confidence() const {
    uint16_t location = 0;
    int16_t confidence = -1;
    MMIfGetCurrentLocation(&location, &confidence);
    return confidence;
}

}  // namespace reference_engine_test
