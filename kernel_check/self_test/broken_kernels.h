// Kernels that do everything but one thing right. Whatever checks kernels must catch each of them.
#pragma once

#include <vector>

#include "kernel_check/variants/functions.h"

namespace quill::test {

// The two correlation kernels, their references first and then only broken variants, named after what is
// wrong.
std::vector<KernelFunction> brokenFunctions();

}  // namespace quill::test
