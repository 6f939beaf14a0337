// How a test controls the scriptable engine: one exported C function, test_engine_control, gives this table.
// The engine and the test-side driver share this header and nothing else.
// Threads: the test's thread. The engine takes no lock.
#pragma once

#include <cstdint>

// Samples of a channel in a block of audio.
inline constexpr int kTestEngineBlock = 160;

// Called with the line of each recorded call, before the engine answers it.
using TestEngineCallback = void (*)(const char* call, void* context);

struct TestEngineControl {
    // The calls so far, each as text: "SEDiagSetInt16(3, 512)". Floats and texts are written as a stream
    // writes them; the contents of buffers are left out. Recording is on at first. While it is off, the
    // engine allocates nothing and does not call back.
    void (*set_recording)(bool on);
    void (*clear_calls)();
    int (*num_calls)();
    const char* (*call)(int number);
    void (*set_callback)(TestEngineCallback callback, void* context);

    // Null from now on for every answer that is a pointer: texts, arrays, records.
    void (*set_null_answers)(bool on);

    // Answers that belong to no diagnostic.
    void (*set_version)(const char* text);
    void (*set_location)(uint16_t location, int16_t confidence);
    void (*set_aec_bypass)(uint16_t bypass);
    uint16_t (*aec_bypass)();
    void (*set_noise_reduction_bypass)(uint32_t bypass);  // all 32 bits reach the caller
    uint32_t (*noise_reduction_bypass)();
    void (*set_noise_result)(int element, float value);  // one of 180
    void (*set_noise_test_running)(bool running);

    // Blocks. The microphones: seven rows of a block as they came in the last call, row 0 from the first
    // argument; the distance: from the first argument to the second, in samples. The output: a block,
    // returned by every MMIfProcessMicrophones.
    const int16_t* (*microphones)();
    int64_t (*microphone_distance)();
    void (*set_output)(const int16_t* samples);

    // The catalogue. An index that is not in it, such as -1, sets the answers to all invalid indexes.
    // result: the index of the new diagnostic. Its value and its elements are 0 at first.
    int (*add_diag)(const char* name, int type, int length, int rw, int level, const char* help);
    void (*set_reported_count)(int count);          // instead of the true number of diagnostics
    void (*set_unknown_name_answer)(int index);     // -1 at first
    void (*set_name)(int index, const char* name);  // SEDiagGetIndex keeps the first one
    void (*set_type)(int index, int type);
    void (*set_length)(int index, int length);
    void (*set_rw)(int index, int rw);
    void (*set_level)(int index, int level);
    void (*set_help)(int index, const char* help);
    void (*set_record)(int index, int level, const char* help);  // in the engine's record alone
    void (*set_integer)(int index, long long value);             // types 1 to 6 and 8
    long long (*integer)(int index);
    void (*set_real)(int index, float value);  // type 7
    float (*real)(int index);
    void (*set_element)(int index, int element, long long value);  // arrays of types 1 to 6
    void (*set_real_element)(int index, int element, float value);
    void (*set_label)(int index, int value, const char* label);  // of an Enum

    // The hook variables by the engine's names ("ComputeRFir", "ComputeRFirFcnHook", ...): the engine's own
    // routine, what the variable holds, and what it held in the last call of MMIfInit. Null: no such name.
    void* (*own_routine)(const char* hook);
    void* (*hook)(const char* hook);
    void* (*hook_at_init)(const char* hook);
};

extern "C" const TestEngineControl* test_engine_control();
