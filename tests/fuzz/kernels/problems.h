// One random call of a routine: its arguments and contents drawn from `random`, its result compared with the
// reference for every build of the kernels that this processor runs.
#pragma once

#include <cstddef>

#include "common/cpu_info.h"
#include "tests/fuzz/kernels/random.h"

namespace quill::fuzz {

const CPUInfo& processor();

// Each returns the number of comparisons.
size_t compareConvolveI16I16(Random& random);
size_t compareConvolveI16I32(Random& random);
size_t compareVcmul(Random& random);
size_t compareDeinterleave(Random& random);
size_t compareInterpolate(Random& random);
size_t compareRFir(Random& random);
size_t compareRealFft(Random& random);
size_t compareFwdFft(Random& random);
size_t compareInvFft(Random& random);
size_t compareSimpleFft(Random& random);
size_t compareFilter(Random& random);

}  // namespace quill::fuzz
