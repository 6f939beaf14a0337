// The door for what the engine answers in texts, arrays, records, lengths and numbers of things: null is taken as
// engine_table_rows.h says, a number that cannot be as below. The wrapper and se_host ask for these through here
// alone.
//
// Texts are taken whole and byte for byte, whatever their bytes and their length: names are keys in the tree. Code
// that prints one uses printable() (common/printable.h), as the default log sink does.
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

// Beyond these an answer is a mistake of the engine, and following it would read past what the engine has or use
// up the memory: four minutes of one channel at 16 kHz, whose text needs up to 92 MB; and a tree of 200 MB.
inline constexpr int32_t kMostElements = 1 << 22;
inline constexpr int32_t kMostDiags = 1 << 18;

// 0 instead of a number of diagnostics that cannot be.
inline int32_t possibleCount(int32_t count) {
    return count < 0 || count > kMostDiags ? 0 : count;
}

inline int32_t numDiags() {
    return possibleCount(SEDiagGetNumDiags());
}

// Whether a diagnostic of this length has a value. 1 and less is a scalar.
inline bool isLengthPossible(int32_t length) {
    return length <= kMostElements;
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
