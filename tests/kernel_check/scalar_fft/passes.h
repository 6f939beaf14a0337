// The butterfly passes. A forward pass takes split rows and leaves packed ones, a backward pass the reverse.
// Threads: any.
#pragma once

#include "tests/kernel_check/scalar_fft/stage.h"

namespace quill::test::scalar_fft {

// in, out: n floats each, not overlapping. The general passes use `in` as their scratch.
using Pass = void(const Stage& stage, float* in, float* out);

Pass forward2;
Pass forward4;
Pass forwardGeneral;

Pass backward2;
Pass backward3;
Pass backward4;
Pass backwardGeneral;

}  // namespace quill::test::scalar_fft
