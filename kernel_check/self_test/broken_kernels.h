// Kernels with one error each. A check of kernels must catch all of them.
#pragma once

#include <vector>

#include "kernel_check/variants/functions.h"

namespace quill::test {

// The two correlation kernels: their references first, then broken variants only, named after their error.
std::vector<KernelFunction> brokenFunctions();

}  // namespace quill::test
