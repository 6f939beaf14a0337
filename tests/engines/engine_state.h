// The state of the scriptable engine: the answers that a test has set, and the recorded calls.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <sstream>
#include <string>
#include <unordered_map>
#include <variant>
#include <vector>

#include "tests/engines/control.h"

// Everything else is hidden; the version scripts choose among these.
#define TEST_ENGINE_EXPORT extern "C" __attribute__((visibility("default")))

// The record of a diagnostic as this engine lays it out.
struct SEDiag_t {
    unsigned char before_level[112];
    int level;
    unsigned char before_help[12];
    const char* help;
};
static_assert(offsetof(SEDiag_t, level) == 112 && offsetof(SEDiag_t, help) == 128);

namespace test_engine {

constexpr int kBlock = kTestEngineBlock;
constexpr int kMicrophones = 7;
constexpr int kNoiseResults = 180;

struct Diag {
    std::string name;
    int type = 0;
    int length = 1;
    int rw = 0;
    int level = 0;
    std::string help;
    int record_level = 0;
    std::string record_help;
    long long integer = 0;
    float real = 0.0f;
    std::map<int, std::string> labels;
    std::map<int, long long> integers;  // elements that are not 0
    std::map<int, float> reals;
    // The elements as they were last returned.
    std::variant<std::monostate, std::vector<int16_t>, std::vector<uint16_t>, std::vector<int32_t>,
                 std::vector<uint32_t>, std::vector<long long>, std::vector<unsigned long long>,
                 std::vector<float>>
        handed_out;
    SEDiag_t record;
};

struct State {
    bool recording = true;
    std::vector<std::string> calls;
    TestEngineCallback callback = nullptr;
    void* callback_context = nullptr;

    bool null_answers = false;
    std::string version = "test_engine_1.0";
    uint16_t location = 0;
    int16_t confidence = 0;
    uint16_t aec_bypass = 0;
    uint32_t noise_reduction_bypass = 0;
    float noise_results[kNoiseResults] = {};
    bool noise_test_running = false;

    int16_t microphones[kMicrophones * kBlock] = {};
    int64_t microphone_distance = 0;
    int16_t output[kBlock] = {};

    std::deque<Diag> diags;
    std::unordered_map<std::string, int> indexes;
    Diag invalid;  // answers for every index that is not in the catalogue
    int reported_count = 0;
    int unknown_name_answer = -1;

    Diag& diag(int index) {
        const bool valid = index >= 0 && static_cast<std::size_t>(index) < diags.size();
        return valid ? diags[static_cast<std::size_t>(index)] : invalid;
    }
};

State& state();

// Records a call as "function(argument, argument)".
template <class... Arguments>
void record(const char* function, Arguments... arguments) {
    State& s = state();
    if (!s.recording) return;
    std::ostringstream line;
    [[maybe_unused]] const char* separator = "";
    line << function << "(";
    ((line << separator << arguments, separator = ", "), ...);
    line << ")";
    s.calls.push_back(line.str());
    if (s.callback != nullptr) s.callback(s.calls.back().c_str(), s.callback_context);
}

// The answer of an entry point that returns a pointer.
template <class T>
T* orNull(T* answer) {
    return state().null_answers ? nullptr : answer;
}

// Implemented beside the hook variables.
void* ownRoutine(const char* hook);
void* currentRoutine(const char* hook);
void* routineAtInit(const char* hook);
void noteHooksAtInit();

}  // namespace test_engine
