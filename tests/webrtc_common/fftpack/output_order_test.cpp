// The position of each bin, shown by signals of one bin.
#include <gtest/gtest.h>

#include <cmath>

#include "kernel_check/references/transforms.h"
#include "webrtc_common/fftpack/fftpack.h"

namespace quill::test {
namespace {

constexpr double kTwoPi = 6.2831853071795864769;

void expectOneValue(int n, const Floats& input, size_t index, float value) {
    const Floats result = RealFft(n).forward(input);
    for (size_t i = 0; i < result.size(); ++i) {
        EXPECT_NEAR(result[i], i == index ? value : 0.0f, 1e-5f * static_cast<float>(n))
            << "n " << n << " i " << i;
    }
}

Floats wave(int n, int bin, double (*function)(double)) {
    Floats x(static_cast<size_t>(n));
    for (int j = 0; j < n; ++j)
        x[static_cast<size_t>(j)] = static_cast<float>(function(kTwoPi * bin * j / n));
    return x;
}

TEST(OutputOrder, AConstantIsInTheFirstValue) {
    for (const int n : {8, 15})
        expectOneValue(n, Floats(static_cast<size_t>(n), 1.0f), 0, static_cast<float>(n));
}

TEST(OutputOrder, ACosineOfBinKIsInValueTwoKMinusOne) {
    for (const int n : {8, 15, 60}) {
        for (int k = 1; 2 * k < n; ++k) {
            expectOneValue(n, wave(n, k, std::cos), static_cast<size_t>(2 * k - 1),
                           0.5f * static_cast<float>(n));
        }
    }
}

TEST(OutputOrder, ASineOfBinKIsNegativeInValueTwoK) {
    for (const int n : {8, 15, 60}) {
        for (int k = 1; 2 * k < n; ++k) {
            expectOneValue(n, wave(n, k, std::sin), static_cast<size_t>(2 * k),
                           -0.5f * static_cast<float>(n));
        }
    }
}

TEST(OutputOrder, TheHighestBinOfAnEvenLengthIsInTheLastValue) {
    for (const int n : {2, 8, 60}) {
        expectOneValue(n, wave(n, n / 2, std::cos), static_cast<size_t>(n - 1), static_cast<float>(n));
    }
}

TEST(OutputOrder, ALengthOfOneIsLeftAlone) {
    float value = 3.0f, wsave[17] = {};
    int ifac[20] = {};
    __ogg_fdrfftf(1, &value, wsave, ifac);
    __ogg_fdrfftb(1, &value, wsave, ifac);
    EXPECT_EQ(value, 3.0f);
}

}  // namespace
}  // namespace quill::test
