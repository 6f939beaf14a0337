// The time of a variant in core cycles.
#pragma once

#include "kernel_check/timing/rounds.h"
#include "kernel_check/variants/functions.h"

namespace timing {

// Of one call, as kernel_check/timing/rounds.h has it.
struct Measurement {
    double cycles = 0;
    double nanoseconds = 0;
    double samples = 0;  // output samples of the call
    double multiply_adds = 0;
};

Measurement measure(const quill::test::FunctionVariant& variant, const quill::test::Numbers& numbers,
                    uint32_t seed, const Rounds& rounds = {});

}  // namespace timing
