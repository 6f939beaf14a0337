#include "host/live/engine_value.h"

#include <algorithm>
#include <type_traits>

#include "webrtc_common/se_wrapper/table/engine_answers.h"

namespace se_host {
namespace {

namespace se = quill::media::se_wrapper;
using Source = EngineValue::Source;

void readLabel(int32_t index, uint64_t* words) {
    char label[kLabelBytes] = {};
    const char* const text = se::diagLabel(index);
    std::memcpy(label, text, ::strnlen(text, kLabelBytes - 1));
    std::memcpy(words, label, sizeof(label));
}

template <class Type>
void readArray(const Type& type, const EngineValue& value, uint64_t* words) {
    words[0] = 0;
    if (type.get_array == nullptr) return;
    const auto* const elements = (*type.get_array)(value.index);
    const int32_t length = std::min(se::SEDiagGetLen(value.index), static_cast<int32_t>(value.elements));
    const int32_t count = std::max(0, se::numElements(elements, length));
    words[0] = static_cast<uint64_t>(count);
    std::transform(elements, elements + count, words + 1, [](auto element) { return pack(element); });
}

void readDiagnostic(const EngineValue& value, uint64_t* words) {
    se::withDiagType(value.type, [&](const auto& type) {
        if (value.isArray()) return readArray(type, value, words);
        words[0] = pack((*type.get)(value.index));
        if (value.type == SE_DIAG_TYPE_ENUM) readLabel(value.index, words + 1);
    });
}

int readLocation(bool confidence_instead) {
    uint16_t location = 0;
    int16_t confidence = 0;
    se::MMIfGetCurrentLocation(&location, &confidence);
    return confidence_instead ? confidence : location;
}

// Builds differ in the width of result and argument; the low 16 bits are the flag in each.
bool noiseReductionBypass() {
    const auto get = reinterpret_cast<uint32_t (*)()>(se::MMIfGetNoiseReductionBypass_Optional);
    return static_cast<uint16_t>(get()) != 0;
}

EditResult setNoiseReductionBypass(bool bypass) {
    if (se::MMIfSetNoiseReductionBypass_Optional == nullptr) return EditResult::kDropped;
    reinterpret_cast<void (*)(uint32_t)>(se::MMIfSetNoiseReductionBypass_Optional)(bypass ? 1 : 0);
    return EditResult::kApplied;
}

EditResult editDiagnostic(const EngineValue& value, uint64_t wanted, uint64_t expected) {
    EditResult result = EditResult::kDropped;
    se::withDiagType(value.type, [&](const auto& type) {
        using Type = std::decay_t<decltype(type)>;
        using Edit = typename Type::EditType;
        const auto engine = static_cast<Edit>((*type.get)(value.index));
        if (engine != unpack<Edit>(expected)) return;
        (*type.set)(value.index, static_cast<typename Type::ValueType>(unpack<Edit>(wanted)));
        result = EditResult::kApplied;
    });
    return result;
}

}  // namespace

size_t wordsOf(const EngineValue& value) {
    if (value.isArray()) return 1 + size_t{value.elements};
    return value.type == SE_DIAG_TYPE_ENUM ? 1 + kLabelWords : 1;
}

void readEngine(const EngineValue& value, uint64_t* words) {
    switch (value.source) {
        case Source::kDiagnostic:
            return readDiagnostic(value, words);
        case Source::kLocation:
            words[0] = pack(readLocation(false));
            return;
        case Source::kConfidence:
            words[0] = pack(readLocation(true));
            return;
        case Source::kAecBypass:
            words[0] = se::MMIfGetAecBypass() != 0 ? 1 : 0;
            return;
        case Source::kNoiseReductionBypass:
            words[0] = noiseReductionBypass() ? 1 : 0;
            return;
    }
}

EditResult editEngine(const EngineValue& value, uint64_t wanted, uint64_t expected) {
    switch (value.source) {
        case Source::kDiagnostic:
            return editDiagnostic(value, wanted, expected);
        case Source::kAecBypass:
            se::MMIfSetAecBypass(wanted != 0 ? 1 : 0);
            return EditResult::kApplied;
        case Source::kNoiseReductionBypass:
            return setNoiseReductionBypass(wanted != 0);
        case Source::kLocation:
        case Source::kConfidence:
            break;
    }
    return EditResult::kDropped;
}

uint64_t editableInEngine(const EngineValue& value) {
    uint64_t word = 0;
    se::withDiagType(value.type, [&](const auto& type) {
        using Type = std::decay_t<decltype(type)>;
        word = pack(static_cast<typename Type::EditType>((*type.get)(value.index)));
    });
    return word;
}

}  // namespace se_host
