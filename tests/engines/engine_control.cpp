// The control functions of the scriptable engine.
#include <algorithm>

#include "tests/engines/engine_state.h"

namespace test_engine {
namespace {

int addDiag(const char* name, int type, int length, int rw, int level, const char* help) {
    State& s = state();
    const int index = static_cast<int>(s.diags.size());
    Diag& diag = s.diags.emplace_back();
    diag.name = name;
    diag.type = type;
    diag.length = length;
    diag.rw = rw;
    diag.level = diag.record_level = level;
    diag.help = diag.record_help = help;
    s.indexes.emplace(name, index);
    s.reported_count = index + 1;
    return index;
}

TestEngineControl makeControl() {
    TestEngineControl c;
    c.set_recording = [](bool on) { state().recording = on; };
    c.clear_calls = [] { state().calls.clear(); };
    c.num_calls = [] { return static_cast<int>(state().calls.size()); };
    c.call = [](int number) { return state().calls.at(static_cast<std::size_t>(number)).c_str(); };
    c.set_callback = [](TestEngineCallback callback, void* context) {
        state().callback = callback;
        state().callback_context = context;
    };

    c.set_null_answers = [](bool on) { state().null_answers = on; };

    c.set_version = [](const char* text) { state().version = text; };
    c.set_location = [](uint16_t location, int16_t confidence) {
        state().location = location;
        state().confidence = confidence;
    };
    c.set_aec_bypass = [](uint16_t bypass) { state().aec_bypass = bypass; };
    c.aec_bypass = [] { return state().aec_bypass; };
    c.set_noise_reduction_bypass = [](uint32_t bypass) { state().noise_reduction_bypass = bypass; };
    c.noise_reduction_bypass = [] { return state().noise_reduction_bypass; };
    c.set_noise_result = [](int element, float value) { state().noise_results[element] = value; };
    c.set_noise_test_running = [](bool running) { state().noise_test_running = running; };

    c.microphones = []() -> const int16_t* { return state().microphones; };
    c.microphone_distance = [] { return state().microphone_distance; };
    c.set_output = [](const int16_t* samples) { std::copy_n(samples, kBlock, state().output); };

    c.add_diag = &addDiag;
    c.set_reported_count = [](int count) { state().reported_count = count; };
    c.set_unknown_name_answer = [](int index) { state().unknown_name_answer = index; };
    c.set_name = [](int index, const char* name) { state().diag(index).name = name; };
    c.set_type = [](int index, int type) { state().diag(index).type = type; };
    c.set_length = [](int index, int length) { state().diag(index).length = length; };
    c.set_rw = [](int index, int rw) { state().diag(index).rw = rw; };
    c.set_level = [](int index, int level) { state().diag(index).level = level; };
    c.set_help = [](int index, const char* help) { state().diag(index).help = help; };
    c.set_record = [](int index, int level, const char* help) {
        state().diag(index).record_level = level;
        state().diag(index).record_help = help;
    };
    c.set_integer = [](int index, long long value) { state().diag(index).integer = value; };
    c.integer = [](int index) { return state().diag(index).integer; };
    c.set_real = [](int index, float value) { state().diag(index).real = value; };
    c.real = [](int index) { return state().diag(index).real; };
    c.set_element = [](int index, int element, long long value) {
        state().diag(index).integers[element] = value;
    };
    c.set_real_element = [](int index, int element, float value) {
        state().diag(index).reals[element] = value;
    };
    c.set_label = [](int index, int value, const char* label) { state().diag(index).labels[value] = label; };

    c.own_routine = &ownRoutine;
    c.hook = &currentRoutine;
    c.hook_at_init = &routineAtInit;
    return c;
}

}  // namespace
}  // namespace test_engine

TEST_ENGINE_EXPORT const TestEngineControl* test_engine_control() {
    static const TestEngineControl control = test_engine::makeControl();
    return &control;
}
