// An engine without a library: its entry points stand in the interface table and answer from `g_engine`.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tests/fuzz/support/input.h"
#include "webrtc_common/se_wrapper/table/engine_table.h"

namespace quill::fuzz {

struct ScriptedDiag {
    std::optional<std::string> name;  // nothing: the engine answers null, here and below
    std::optional<std::string> help;
    std::optional<std::string> label;
    int32_t type = 1;
    int32_t length = 1;
    int32_t rw = 3;
    int32_t level = 0;
    long long integer = 0;
    float real = 0;
    bool ignores_edits = false;
    bool has_elements = true;
    // Bytes of the elements; no elements are null.
    std::vector<long long> elements = {};
};

struct ScriptedEngine {
    std::vector<ScriptedDiag> diags;
    int32_t reported_count = 0;
    bool aec_bypass = false;
    bool noise_reduction_bypass = false;
    media::se_wrapper::NoiseTestResults* noise_results = nullptr;
    int edits = 0;  // calls of setters of diagnostics
};

extern ScriptedEngine g_engine;

// Fills the interface table.
void installScriptedEngine();

// A catalogue of up to 12 diagnostics. Their answers are any that a C interface can give, but an array that is not null
// has as many elements as the length says.
ScriptedEngine engineFrom(Input& input);

}  // namespace quill::fuzz
