// Contents for test buffers. Moderate noise does not show the errors of fixed-point kernels. They occur at the
// ends of the range, mainly at -32768.
#pragma once

#include <cstddef>
#include <cstdint>
#include <random>

namespace quill::test {

struct Filler {
    const char* name;
    void (*fill)(int16_t* data, size_t count, std::mt19937& random);
};

inline constexpr size_t kNumFillers = 8;
extern const Filler kFillers[kNumFillers];

// Uniform over the range of int16.
extern const Filler& kUniform;

using FloatFiller = void (*)(float* data, size_t count, std::mt19937& random);

// Whole numbers of 16 bits, as the transforms get them: all zero, extreme or uniform.
void fillWithSampleValues(float* data, size_t count, std::mt19937& random);

// Every kind of float: both sides of the limits of 16 and 32 bits, fractions, any pattern of bits.
void fillWithAnyFloats(float* data, size_t count, std::mt19937& random);

}  // namespace quill::test
