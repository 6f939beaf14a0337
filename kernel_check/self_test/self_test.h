// The harness on deliberately broken kernels.
#pragma once

#include <cstdint>

namespace quill::test {

// Prints how each was caught. True when all were caught and their references were not.
bool selfTest(uint32_t seed, int repeat);

}  // namespace quill::test
