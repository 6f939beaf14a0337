// The transforms under test with their own arrays, and direct transforms in extended precision.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

namespace quill::test {

using Floats = std::vector<float>;
using Exact = std::vector<long double>;

// A set-up of the real FFT and its two transforms, on copies.
struct RealFft {
    explicit RealFft(int length);
    Floats forward(Floats r);
    Floats backward(Floats r);

    int n;
    Floats wsave;
    std::array<int, 20> ifac{};
};

// A set-up of the quarter-wave cosine transform.
struct CosineTransform {
    explicit CosineTransform(int length);
    Floats forward(Floats x);
    Floats backward(Floats x);

    int n;
    Floats wsave;
    std::array<int, 20> ifac{};
};

// Their exact results by the definition; the work is proportional to n squared.
Exact directForward(const Floats& r);
Exact directBackward(const Floats& r);
Exact directCosineForward(const Floats& x);
Exact directCosineBackward(const Floats& x);

// Lengths 1 to 600.
std::vector<int> smallLengths();
// Powers of each small factor, products of several, primes.
std::vector<int> largeLengths();

// Uniform in -1 .. 1, the same for the same n.
Floats noise(int n);
double norm(const Floats& x);
double largestDifference(const Floats& x, const Exact& exact);

// The sum over the factors p of 2 + p^2 / 8. A transform's result is within this many times
// 2^-24 sqrt(n) |input| of the exact one. It grows with the square of the largest factor, because the cosines
// of a general pass come from a recurrence of a recurrence.
double errorFactor(const std::array<int, 20>& ifac);

inline constexpr double kEpsilon = 1.0 / (1 << 24);

}  // namespace quill::test
