// One of the engine's values as words, so that the audio thread can hand it to other threads and take edits of it: a
// number is its bits; an enumeration its number and its label; an array its length and its elements.
// Threads: the functions that call the engine on the audio thread, between two blocks, or before there is one. rt-safe, as
// far as the engine is.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "webrtc_common/se_wrapper/diags/diag_types.h"

namespace se_host {

struct EngineValue {
    enum class Source : uint8_t { kDiagnostic, kLocation, kConfidence, kAecBypass, kNoiseReductionBypass };

    Source source = Source::kDiagnostic;
    int32_t index = 0;                      // of a diagnostic
    SEDiagType_t type = SE_DIAG_TYPE_NONE;  // of a diagnostic
    uint32_t elements = 1;                  // above 1: an array

    bool isArray() const { return elements > 1; }
};

inline constexpr size_t kLabelWords = 8;
inline constexpr size_t kLabelBytes = kLabelWords * sizeof(uint64_t);  // the terminating 0 included

// How many words the value takes.
size_t wordsOf(const EngineValue& value);

template <class Number>
uint64_t pack(Number number) {
    if constexpr (std::is_floating_point_v<Number>) {
        uint32_t bits;
        std::memcpy(&bits, &number, sizeof(bits));
        return bits;
    } else {
        return static_cast<uint64_t>(number);
    }
}

template <class Number>
Number unpack(uint64_t word) {
    if constexpr (std::is_floating_point_v<Number>) {
        const auto bits = static_cast<uint32_t>(word);
        Number number;
        std::memcpy(&number, &bits, sizeof(number));
        return number;
    } else {
        return static_cast<Number>(word);
    }
}

// out: wordsOf(value) words.
void readEngine(const EngineValue& value, uint64_t* words);

// What came of an edit.
enum class EditResult : uint8_t { kApplied, kDropped };

// Hands an edit of a single value to the engine if the engine still holds `expected`, as applying does; a switch always.
// in: both as the numbers of an edit of this type, packed.
EditResult editEngine(const EngineValue& value, uint64_t wanted, uint64_t expected);

// What the engine holds, as the number of an edit, packed.
uint64_t editableInEngine(const EngineValue& value);

}  // namespace se_host
