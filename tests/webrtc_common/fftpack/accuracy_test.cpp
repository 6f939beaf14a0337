// The real FFT against the direct transform: every small length, and large ones of every kind.
#include <gtest/gtest.h>

#include <cmath>

#include "kernel_check/references/transforms.h"

namespace quill::test {
namespace {

// Noise contains all frequencies; a constant and the last of all impulses show each twiddle factor by itself.
std::vector<Floats> inputs(int n) {
    Floats constant(static_cast<size_t>(n), 1.0f);
    Floats impulse(static_cast<size_t>(n));
    impulse.back() = 1.0f;
    return {noise(n), constant, impulse};
}

void expectWithinBound(const Floats& result, const Exact& exact, const Floats& input, const RealFft& fft) {
    const double bound = kEpsilon * std::sqrt(fft.n) * norm(input) * errorFactor(fft.ifac);
    EXPECT_LE(largestDifference(result, exact), bound) << "n = " << fft.n;
}

TEST(RealFftAccuracy, ForwardIsTheDirectTransformAtEverySmallLength) {
    for (const int n : smallLengths()) {
        RealFft fft(n);
        for (const Floats& x : inputs(n)) expectWithinBound(fft.forward(x), directForward(x), x, fft);
    }
}

TEST(RealFftAccuracy, BackwardIsTheDirectTransformAtEverySmallLength) {
    for (const int n : smallLengths()) {
        RealFft fft(n);
        for (const Floats& x : inputs(n)) expectWithinBound(fft.backward(x), directBackward(x), x, fft);
    }
}

TEST(RealFftAccuracy, ForwardIsTheDirectTransformAtLargeAndPrimeLengths) {
    for (const int n : largeLengths()) {
        RealFft fft(n);
        expectWithinBound(fft.forward(noise(n)), directForward(noise(n)), noise(n), fft);
    }
}

TEST(RealFftAccuracy, BackwardIsTheDirectTransformAtLargeAndPrimeLengths) {
    for (const int n : largeLengths()) {
        RealFft fft(n);
        expectWithinBound(fft.backward(noise(n)), directBackward(noise(n)), noise(n), fft);
    }
}

// The bound of the general pass is wide; lengths without large factors have a tighter one.
TEST(RealFftAccuracy, LengthsWithoutAGeneralFactorLoseAFewUnitsInTheLastPlace) {
    for (const int n : {64, 128, 256, 512, 1024}) {
        RealFft fft(n);
        const Floats x = noise(n);
        EXPECT_LE(largestDifference(fft.forward(x), directForward(x)), 4 * kEpsilon * norm(x) * std::log2(n));
        EXPECT_LE(largestDifference(fft.backward(x), directBackward(x)),
                  8 * kEpsilon * norm(x) * std::log2(n));
    }
}

}  // namespace
}  // namespace quill::test
