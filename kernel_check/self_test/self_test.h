// The harness on kernels that are broken on purpose.
#pragma once

#include <cstdint>

namespace quill::test {

// Prints how each was caught; true when all were, and their references were not.
bool selfTest(uint32_t seed, int repeat);

}  // namespace quill::test
