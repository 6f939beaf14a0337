#include "tests/fuzz/host/scripted_engine.h"

#include <algorithm>

namespace quill::fuzz {

ScriptedEngine g_engine;

namespace {

namespace se = media::se_wrapper;

constexpr int32_t kMostElements = 5000;

ScriptedDiag& at(int32_t index) {
    static ScriptedDiag unknown;
    const bool known = index >= 0 && static_cast<size_t>(index) < g_engine.diags.size();
    return known ? g_engine.diags[static_cast<size_t>(index)] : unknown;
}

const char* orNull(const std::optional<std::string>& text) {
    return text ? text->c_str() : nullptr;
}

template <class T>
T get(int32_t index) {
    return static_cast<T>(at(index).integer);
}

template <class T>
void set(int32_t index, T value) {
    ++g_engine.edits;
    if (!at(index).ignores_edits) at(index).integer = static_cast<long long>(value);
}

void setReal(int32_t index, float value) {
    ++g_engine.edits;
    if (!at(index).ignores_edits) at(index).real = value;
}

template <class T>
T* elements(int32_t index) {
    ScriptedDiag& diag = at(index);
    return diag.has_elements ? reinterpret_cast<T*>(diag.elements.data()) : nullptr;
}

SEDiag_t* record(int32_t index) {
    static SEDiag_t record;
    record.level = at(index).level;
    record.help = orNull(at(index).help);
    return &record;
}

std::optional<std::string> textOrNull(Input& input) {
    if (input.below(16) == 0) return std::nullopt;
    std::string text = input.text();
    return text.substr(0, text.find('\0'));
}

int32_t usually(Input& input, int32_t lowest, int32_t highest) {
    if (input.below(8) == 0) return input.number<int32_t>();
    return lowest + static_cast<int32_t>(input.below(static_cast<unsigned>(highest - lowest + 1)));
}

std::optional<std::string> nameFrom(Input& input) {
    constexpr const char* kNames[] = {"gain_q10", "mode", "noise_floor", "enabled", "spectrum", "aec_bypass"};
    if (input.coin()) return input.oneOf(kNames);
    return textOrNull(input);
}

ScriptedDiag diagFrom(Input& input) {
    ScriptedDiag diag;
    diag.name = nameFrom(input);
    diag.type = usually(input, 0, 9);
    diag.length = input.coin() ? 1 : usually(input, -1, 40);
    diag.rw = usually(input, 0, 3);
    diag.level = usually(input, 0, 3);
    diag.help = textOrNull(input);
    diag.label = textOrNull(input);
    diag.integer = input.number<long long>() >> input.below(64);
    diag.real = input.coin() ? input.number<float>() : static_cast<float>(diag.integer);
    diag.ignores_edits = input.below(8) == 0;
    diag.has_elements = diag.length <= kMostElements && input.below(8) != 0;
    if (diag.has_elements) {
        diag.elements.resize(static_cast<size_t>(std::max(diag.length, 1)));
        for (long long& element : diag.elements) element = input.number<long long>();
    }
    return diag;
}

}  // namespace

void installScriptedEngine() {
    se::MMIfGetVersionString = []() -> const char* { return "scripted_1.0"; };
    se::MMIfGetCurrentLocation = [](uint16_t* location, int16_t* confidence) {
        *location = 2;
        *confidence = 3;
    };
    se::MMIfGetAecBypass = []() -> uint16_t { return g_engine.aec_bypass; };
    se::MMIfSetAecBypass = [](uint16_t bypass) { g_engine.aec_bypass = bypass != 0; };
    se::MMIfGetNoiseReductionBypass_Optional =
        reinterpret_cast<void*>(+[]() -> uint32_t { return g_engine.noise_reduction_bypass; });
    se::MMIfSetNoiseReductionBypass_Optional =
        reinterpret_cast<void*>(+[](uint32_t bypass) { g_engine.noise_reduction_bypass = bypass != 0; });
    se::MMIfGetNoiseTestResults_Optional = [] { return g_engine.noise_results; };

    se::SEDiagGetInt16 = get<int16_t>;
    se::SEDiagGetUInt16 = get<uint16_t>;
    se::SEDiagGetInt32 = get<int32_t>;
    se::SEDiagGetUInt32 = get<uint32_t>;
    se::SEDiagGetInt40 = get<long long>;
    se::SEDiagGetUInt40 = get<unsigned long long>;
    se::SEDiagGetFloat32 = [](int32_t index) { return at(index).real; };
    se::SEDiagSetInt16 = set<int16_t>;
    se::SEDiagSetUInt16 = set<uint16_t>;
    se::SEDiagSetInt32 = set<int32_t>;
    se::SEDiagSetUInt32 = set<uint32_t>;
    se::SEDiagSetInt40 = set<long long>;
    se::SEDiagSetUInt40 = set<unsigned long long>;
    se::SEDiagSetFloat32 = setReal;
    se::SEDiagGetInt16Array = elements<int16_t>;
    se::SEDiagGetUInt16Array = elements<uint16_t>;
    se::SEDiagGetInt32Array = elements<int32_t>;
    se::SEDiagGetUInt32Array = elements<uint32_t>;
    se::SEDiagGetInt40Array = elements<long long>;
    se::SEDiagGetUInt40Array = elements<unsigned long long>;
    se::SEDiagGetFloat32Array = elements<float>;
    se::SEDiagGet = record;
    se::SEDiagGetEnumAsInt = get<int32_t>;
    se::SEDiagSetEnumAsInt = set<int32_t>;
    se::SEDiagGetEnumAsString = [](int32_t index) { return orNull(at(index).label); };
    se::SEDiagGetNumDiags = [] { return g_engine.reported_count; };
    se::SEDiagGetType = [](int32_t index) { return static_cast<SEDiagType_t>(at(index).type); };
    se::SEDiagGetLen = [](int32_t index) { return at(index).length; };
    se::SEDiagGetHelp = [](int32_t index) { return orNull(at(index).help); };
    se::SEDiagGetRW = [](int32_t index) { return static_cast<SEDiagRW_t>(at(index).rw); };
    se::SEDiagGetLevel = [](int32_t index) { return at(index).level; };
    se::SEDiagGetName = [](int32_t index) { return orNull(at(index).name); };
}

ScriptedEngine engineFrom(Input& input) {
    ScriptedEngine engine;
    engine.diags.resize(input.below(13));
    for (ScriptedDiag& diag : engine.diags) diag = diagFrom(input);
    engine.reported_count = static_cast<int32_t>(engine.diags.size());
    if (input.below(16) == 0) engine.reported_count = static_cast<int32_t>(input.below(20)) - 2;
    return engine;
}

}  // namespace quill::fuzz
