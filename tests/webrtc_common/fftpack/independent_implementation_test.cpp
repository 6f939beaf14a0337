// An independent implementation of the same algorithm, from the static archive of the SpeexDSP library, must
// give the same bits: tables, forward and backward transforms. No value differs.
#include <gtest/gtest.h>

#include <cstring>

#include "tests/kernel_check/transforms.h"

extern "C" {
struct IndependentFft {
    int n;
    float* wsave;
    int* ifac;
};
void spx_drft_init(IndependentFft* fft, int n);
void spx_drft_forward(IndependentFft* fft, float* data);
void spx_drft_backward(IndependentFft* fft, float* data);
void spx_drft_clear(IndependentFft* fft);
}

namespace quill::test {
namespace {

class SameBits : public ::testing::Test {
  protected:
    // Calls check(ours, theirs) for each length.
    template <class Check>
    void forEachLength(const Check& check) {
        std::vector<int> lengths = smallLengths();
        for (const int n : largeLengths()) lengths.push_back(n);
        for (const int n : {4093, 10007, 16384, 15625, 65536}) lengths.push_back(n);
        for (const int n : lengths) {
            RealFft ours(n);
            IndependentFft theirs{};
            spx_drft_init(&theirs, n);
            check(ours, theirs);
            spx_drft_clear(&theirs);
        }
    }
};

// Bit patterns, so that zeros of different sign differ. -1 when there is none.
int firstDifference(const float* a, const float* b, int n) {
    for (int i = 0; i < n; ++i) {
        if (std::memcmp(a + i, b + i, sizeof(float)) != 0) return i;
    }
    return -1;
}

TEST_F(SameBits, OfTheTables) {
    forEachLength([](RealFft& ours, IndependentFft& theirs) {
        if (ours.n == 1) return;  // neither fills anything
        EXPECT_EQ(
            std::memcmp(ours.ifac.data(), theirs.ifac, sizeof(int) * (2 + static_cast<size_t>(ours.ifac[1]))),
            0)
            << ours.n;
        EXPECT_EQ(firstDifference(ours.wsave.data() + ours.n, theirs.wsave + ours.n, ours.n), -1) << ours.n;
    });
}

TEST_F(SameBits, OfTheForwardTransform) {
    forEachLength([](RealFft& ours, IndependentFft& theirs) {
        Floats data = noise(ours.n);
        const Floats result = ours.forward(data);
        spx_drft_forward(&theirs, data.data());
        EXPECT_EQ(firstDifference(result.data(), data.data(), ours.n), -1) << ours.n;
    });
}

TEST_F(SameBits, OfTheBackwardTransform) {
    forEachLength([](RealFft& ours, IndependentFft& theirs) {
        Floats data = noise(ours.n);
        const Floats result = ours.backward(data);
        spx_drft_backward(&theirs, data.data());
        EXPECT_EQ(firstDifference(result.data(), data.data(), ours.n), -1) << ours.n;
    });
}

TEST_F(SameBits, OfTransformsWithManyZeros) {
    forEachLength([](RealFft& ours, IndependentFft& theirs) {
        Floats forward(static_cast<size_t>(ours.n));
        forward[forward.size() / 3] = -1.0f;
        Floats backward = forward;
        const Floats ours_forward = ours.forward(forward);
        const Floats ours_backward = ours.backward(backward);
        spx_drft_forward(&theirs, forward.data());
        spx_drft_backward(&theirs, backward.data());
        EXPECT_EQ(firstDifference(ours_forward.data(), forward.data(), ours.n), -1) << ours.n;
        EXPECT_EQ(firstDifference(ours_backward.data(), backward.data(), ours.n), -1) << ours.n;
    });
}

}  // namespace
}  // namespace quill::test
