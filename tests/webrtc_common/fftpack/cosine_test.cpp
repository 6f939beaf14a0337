// The quarter-wave cosine transforms against their definitions.
#include <gtest/gtest.h>

#include <cmath>

#include "kernel_check/references/transforms.h"

namespace quill::test {
namespace {

// Two rotations by the table of cosines count as two more factors of 4.
double bound(const CosineTransform& transform, const Floats& x) {
    return 2 * kEpsilon * std::sqrt(transform.n) * norm(x) * (8 + errorFactor(transform.ifac));
}

TEST(CosineTransform, ForwardIsItsDefinitionAtEverySmallLength) {
    for (const int n : smallLengths()) {
        CosineTransform transform(n);
        const Floats x = noise(n);
        EXPECT_LE(largestDifference(transform.forward(x), directCosineForward(x)), bound(transform, x)) << n;
    }
}

TEST(CosineTransform, BackwardIsItsDefinitionAtEverySmallLength) {
    for (const int n : smallLengths()) {
        CosineTransform transform(n);
        const Floats x = noise(n);
        EXPECT_LE(largestDifference(transform.backward(x), directCosineBackward(x)), 2 * bound(transform, x))
            << n;
    }
}

TEST(CosineTransform, ForwardOfOneValueLeavesIt) {
    EXPECT_EQ(CosineTransform(1).forward({3.0f}), Floats{3.0f});
}

TEST(CosineTransform, BackwardOfOneValueIsFourTimesIt) {
    EXPECT_EQ(CosineTransform(1).backward({3.0f}), Floats{12.0f});
}

}  // namespace
}  // namespace quill::test
