// What goes through the contestants, and how results are compared.
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

// In units of the last place; samples as they are, floats in the same scale before they are rounded.
double largestDifference(const int16_t* got, const int16_t* expected, size_t count);
double largestDifference(const float* got, const int16_t* expected, size_t count);

// The norm of the difference over that of `expected`.
double relativeError(const float* got, const float* expected, size_t count);

// The part of `samples` that is no sine of this frequency (cycles a sample), and that of an amplitude that is
// not the one expected, as amplitudes relative to it: 0 for a perfect tone.
double toneError(const Floats& samples, double frequency, double amplitude);

}  // namespace routines_vs_libraries
