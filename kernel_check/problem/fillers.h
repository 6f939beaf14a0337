// Contents for test buffers. Mistakes of fixed-point kernels hide from moderate noise; they show at the ends
// of the range, at -32768 above all.
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

// Anything in the range of int16, each value equally likely.
extern const Filler& kUniform;

using FloatFiller = void (*)(float* data, size_t count, std::mt19937& random);

// Whole numbers of 16 bits, as transforms are given them; all zero, extreme or uniform.
void fillWithSampleValues(float* data, size_t count, std::mt19937& random);

// Every kind of float: both sides of the limits of 16 and 32 bits, fractions, any pattern of bits.
void fillWithAnyFloats(float* data, size_t count, std::mt19937& random);

}  // namespace quill::test
