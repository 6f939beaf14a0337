// An independent implementation of the same algorithm must give the same bits: tables, forward and backward
// transforms. No value differs.
#include <gtest/gtest.h>

#include <cstring>

#include "kernel_check/references/published_fft.h"
#include "kernel_check/references/transforms.h"

namespace quill::test {
namespace {

std::vector<int> everyLength() {
    std::vector<int> lengths = smallLengths();
    for (const int n : largeLengths()) lengths.push_back(n);
    for (const int n : {4093, 10007, 16384, 15625, 65536}) lengths.push_back(n);
    return lengths;
}

// Bit patterns, so that zeros of different sign differ. -1 when there is none.
int firstDifference(const float* a, const float* b, int n) {
    for (int i = 0; i < n; ++i) {
        if (std::memcmp(a + i, b + i, sizeof(float)) != 0) return i;
    }
    return -1;
}

// Both transforms, of the same values.
void expectSameTransforms(int n, const Floats& x) {
    RealFft ours(n);
    Floats theirs = x;
    publishedForwardFft(n, theirs.data());
    EXPECT_EQ(firstDifference(ours.forward(x).data(), theirs.data(), n), -1) << "forward, " << n;
    theirs = x;
    publishedBackwardFft(n, theirs.data());
    EXPECT_EQ(firstDifference(ours.backward(x).data(), theirs.data(), n), -1) << "backward, " << n;
}

TEST(SameBits, OfTheTables) {
    for (const int n : everyLength()) {
        if (n == 1) continue;  // neither fills anything
        const RealFft ours(n);
        const PublishedTables& theirs = publishedTables(n);
        const size_t factors = 2 + static_cast<size_t>(ours.ifac[1]);
        EXPECT_EQ(std::memcmp(ours.ifac.data(), theirs.ifac, factors * sizeof(int)), 0) << n;
        EXPECT_EQ(firstDifference(ours.wsave.data() + n, theirs.wsave + n, n), -1) << n;
    }
}

TEST(SameBits, OfTransformsOfNoise) {
    for (const int n : everyLength()) expectSameTransforms(n, noise(n));
}

TEST(SameBits, OfTransformsWithManyZeros) {
    for (const int n : everyLength()) {
        Floats impulse(static_cast<size_t>(n));
        impulse[impulse.size() / 3] = -1.0f;
        expectSameTransforms(n, impulse);
    }
}

}  // namespace
}  // namespace quill::test
