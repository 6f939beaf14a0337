// The checks of kernel_check/ for one correlation kernel at a time, whether or not it stands in a table.
#pragma once

#include <string>

#include "kernel_check/variants/functions.h"

namespace quill::test {

// Runs the kernel and the reference on the problem of this seed and these numbers, and compares the buffers
// and their surroundings. Empty when they are equal; else the first difference, the numbers and the seed.
std::string difference(ConvolveI16I16* kernel, uint32_t seed, const Numbers& given = {});
std::string difference(ConvolveI16I32* kernel, uint32_t seed, const Numbers& given = {});

// The first difference over all pairs of kLengths and all pairs of fillers; places and shifts change from
// problem to problem. Empty when there is none.
std::string firstDifference(ConvolveI16I16* kernel);
std::string firstDifference(ConvolveI16I32* kernel);

}  // namespace quill::test
