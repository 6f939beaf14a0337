// The engine's diagnostics: name, type, range, access and help.
#pragma once

#include <string>
#include <vector>

#include "webrtc_common/se_wrapper.h"

namespace se_host {

// The type of a diagnostic; the limits are those of a user's edit.
struct DiagKind {
    SEDiagType_t type;
    const char* name;
    double lowest;
    double highest;
    bool is_real;  // takes numbers with a fraction
};

struct DiagInfo {
    int index;
    std::string name;
    std::string path;  // of its node, "diags/basic/NAME"
    const DiagKind* kind;
    int length;  // elements; 1: a single value
    bool writable;
    std::string help;

    bool isArray() const { return length > 1; }
    bool isEnum() const;
    // "Int16", "Float32[30]".
    std::string typeText() const;
};

// The whole catalogue, in its order. needs: a loaded engine.
std::vector<DiagInfo> allDiags();

// Whether its name or its path matches, with * and ? as in file names.
bool matches(const DiagInfo& diag, const std::string& pattern);

}  // namespace se_host
