// What the engine answers in texts, arrays and records, with null taken as engine_table_rows.h says. The wrapper
// asks for these through here alone.
// Threads: as the rows that are asked. Nothing is kept.
#pragma once

#include <cstdint>

#include "webrtc_common/se_wrapper/table/engine_table.h"

namespace quill::media::se_wrapper {

inline const char* textOr(const char* instead, const char* text) {
    return text == nullptr ? instead : text;
}

inline const char* engineVersion() {
    return textOr("", MMIfGetVersionString());
}

inline const char* diagName(int32_t index) {
    return textOr("(null)", SEDiagGetName(index));
}

inline const char* diagLabel(int32_t index) {
    return textOr("(null)", SEDiagGetEnumAsString(index));
}

inline const char* diagHelp(int32_t index) {
    return textOr("", SEDiagGetHelp(index));
}

// How many of `length` elements can be read.
inline int32_t numElements(const void* elements, int32_t length) {
    return elements == nullptr ? 0 : length;
}

inline int32_t levelOf(const SEDiag_t* record) {
    return record == nullptr ? 0 : record->level;
}

inline const char* helpOf(const SEDiag_t* record) {
    return record == nullptr ? nullptr : record->help;
}

// Null: the engine has no noise test, or no results.
inline const NoiseTestResults* noiseTestResults() {
    return MMIfGetNoiseTestResults_Optional == nullptr ? nullptr : MMIfGetNoiseTestResults_Optional();
}

}  // namespace quill::media::se_wrapper
