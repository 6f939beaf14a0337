// Backward after forward.
#include <gtest/gtest.h>

#include "kernel_check/references/transforms.h"

namespace quill::test {
namespace {

template <class Transform>
void expectTimes(double factor, int n) {
    Transform transform(n);
    const Floats x = noise(n);
    Exact expected(x.begin(), x.end());
    for (long double& value : expected) value *= factor;
    const double bound = 2 * kEpsilon * factor * norm(x) * errorFactor(transform.ifac);
    EXPECT_LE(largestDifference(transform.backward(transform.forward(x)), expected), bound) << "n = " << n;
}

TEST(RealFftRoundTrip, ReturnsNTimesTheInput) {
    for (const int n : smallLengths()) expectTimes<RealFft>(n, n);
    for (const int n : largeLengths()) expectTimes<RealFft>(n, n);
}

TEST(CosineRoundTrip, ReturnsFourNTimesTheInput) {
    for (const int n : smallLengths()) {
        if (n > 1) expectTimes<CosineTransform>(4.0 * n, n);
    }
    for (const int n : largeLengths()) expectTimes<CosineTransform>(4.0 * n, n);
}

TEST(CosineRoundTrip, OfOneValueReturnsFourTimesTheInput) {
    CosineTransform transform(1);
    EXPECT_EQ(transform.backward(transform.forward({3.0f})), Floats{12.0f});
}

}  // namespace
}  // namespace quill::test
