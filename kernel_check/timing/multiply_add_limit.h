// The machine's limit of multiply-accumulates, for comparison with a kernel's figure.
#pragma once

#include <vector>

#include "common/cpu_info.h"

namespace timing {

// One register width and one method: pairs of 16-bit samples multiplied and then added ("madd"), or both in one
// instruction ("dot"), in registers only.
struct MultiplyAddLimit {
    const char* name;
    bool quill::CPUInfo::*needs;
    double multiply_adds;  // of one run of the loop
    void (*loop)();
};

// Narrow to wide.
const std::vector<MultiplyAddLimit>& multiplyAddLimits();

}  // namespace timing
