// How many multiplications with addition this machine can do at all: what a kernel's figure is held against.
// Threads: any.
#pragma once

#include "tests/kernel_check/functions.h"

namespace kernel_harness {

// One row for each width of register and way of adding: pairs of 16-bit samples multiplied and added ("madd"),
// or both in one instruction ("dot"), everything in registers. Rows that are only timed; there is no reference.
quill::test::KernelFunction multiplyAddLimits();

}  // namespace kernel_harness
