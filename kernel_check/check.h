// Runs a variant and its reference on equal problems.
#pragma once

#include <cstdint>
#include <string>

#include "kernel_check/variants/functions.h"

namespace quill::test {

// The first fault of a variant on the problem of this seed, with the problem's numbers; empty when there is none.
// The reference itself is checked by its own judge.
std::string fault(const KernelFunction& function, const FunctionVariant& variant, uint32_t seed,
                  const Numbers& given = {});

struct Failure {
    uint32_t seed;
    std::string text;
};

// The first fault among `repeat` problems of consecutive seeds; empty when there is none.
Failure firstFault(const KernelFunction& function, const FunctionVariant& variant, uint32_t seed, int repeat);

}  // namespace quill::test
