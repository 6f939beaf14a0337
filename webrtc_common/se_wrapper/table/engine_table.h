// The engine interface table: one global pointer for each entry point of the engine, null until an engine
// is loaded. openSignalEssenceDynamicLibrary writes the table, once; all other code only reads it.
// Threads: each slot carries its own tag, beside its row in engine_table_rows.h.
#pragma once

#include <cstddef>
#include <cstdint>

#include "webrtc_common/export.h"
#include "webrtc_common/se_wrapper/table/engine_types.h"

namespace quill::media::se_wrapper {

// How a slot is resolved.
enum class EngineRowKind {
    mandatory,     // under one name
    alternatives,  // under the first of two names that the engine exports
    hook,          // the same; the slot is the address of a variable of the engine
    optional,      // may stay null
    direction,     // optional, but all rows of the kind or none
    noise_test,    // the same
    dft_hook,      // the same; the slots are addresses of variables of the engine
    defaulted,     // the engine's, or the wrapper's own function in its place: never null once loaded
};

// Whether every engine has to export a symbol of a row of this kind.
constexpr bool isRequired(EngineRowKind kind) {
    switch (kind) {
        case EngineRowKind::mandatory:
        case EngineRowKind::alternatives:
        case EngineRowKind::hook:
            return true;
        case EngineRowKind::optional:
        case EngineRowKind::direction:
        case EngineRowKind::noise_test:
        case EngineRowKind::dft_hook:
        case EngineRowKind::defaulted:
            break;
    }
    return false;
}

// The type of a slot, as a name that can stand before the variable.
template <class T>
using EngineSlot = T;

#define ENGINE_ROW(kind, variable, type, ...) extern SE_WRAPPER_EXPORT EngineSlot<type> variable;
#include "webrtc_common/se_wrapper/table/engine_table_rows.h"

// True exactly when the engine has all of the direction rows, or all of the noise-test rows. Written once,
// with the table; [any] after that.
extern SE_WRAPPER_EXPORT bool g_has_beam_forming;
extern SE_WRAPPER_EXPORT bool g_has_noise_tests;

// The table as data, in the order of resolution.
struct EngineRow {
    const char* variable;
    EngineRowKind kind;
    const char* symbols[2];  // in the order in which they are tried; the second may be null
};

inline constexpr EngineRow kEngineRows[] = {
#define ENGINE_ROW(kind, variable, type, ...) {#variable, EngineRowKind::kind, {__VA_ARGS__}},
#include "webrtc_common/se_wrapper/table/engine_table_rows.h"
};
inline constexpr std::size_t kNumEngineRows = sizeof(kEngineRows) / sizeof(kEngineRows[0]);

// [control] Whether the slot of kEngineRows[row] is filled. needs: row < kNumEngineRows.
SE_WRAPPER_EXPORT bool isEngineRowPresent(std::size_t row);

// [control] The number of filled slots of a kind.
SE_WRAPPER_EXPORT int countPresentEngineRows(EngineRowKind kind);

}  // namespace quill::media::se_wrapper
