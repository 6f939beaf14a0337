// The contestants' input, and the comparison of results.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace routines_vs_libraries {

using Samples = std::vector<int16_t>;
using Floats = std::vector<float>;

// Uniform in -peak .. peak, the same for the same arguments.
Samples noise(size_t count, int peak, uint32_t seed);

// 16-bit values as floats, unchanged or as Q15 fractions.
Floats widened(const Samples& samples, float factor = 1.0f);

// In units of the last place; samples unchanged, floats in the same scale before rounding.
double largestDifference(const int16_t* got, const int16_t* expected, size_t count);
double largestDifference(const float* got, const int16_t* expected, size_t count);

// The norm of the difference over that of `expected`.
double relativeError(const float* got, const float* expected, size_t count);

// The part of `samples` that is not a sine of this frequency (cycles a sample), and the error of its amplitude,
// both relative to the expected amplitude: 0 for a perfect tone.
double toneError(const Floats& samples, double frequency, double amplitude);

}  // namespace routines_vs_libraries
