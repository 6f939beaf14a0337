// How many multiplications with addition this machine can do at all: what a kernel's figure is held against.
#pragma once

#include <vector>

#include "common/cpu_info.h"

namespace timing {

// One width of register and way of adding: pairs of 16-bit samples multiplied and added ("madd"), or both in
// one instruction ("dot"), everything in registers.
struct MultiplyAddLimit {
    const char* name;
    bool quill::CPUInfo::*needs;
    double multiply_adds;  // of one run of the loop
    void (*loop)();
};

// Narrow to wide.
const std::vector<MultiplyAddLimit>& multiplyAddLimits();

}  // namespace timing
