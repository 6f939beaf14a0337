// What set-up writes into the caller's arrays, and what it leaves unchanged.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <thread>

#include "kernel_check/references/transforms.h"
#include "webrtc_common/fftpack/fftpack.h"

namespace quill::test {
namespace {

constexpr float kTwoPi = 6.2831853071795864769f;
constexpr float kPoison = -123.0f;

std::vector<int> factors(int n) {
    const RealFft fft(n);
    return {fft.ifac.begin(), fft.ifac.begin() + 2 + fft.ifac[1]};
}

float cosineOf(float angle) {
    return static_cast<float>(std::cos(static_cast<double>(angle)));
}
float sineOf(float angle) {
    return static_cast<float>(std::sin(static_cast<double>(angle)));
}

TEST(Factors, AreFoursThenTwoThreeFiveThenOddNumbers) {
    EXPECT_EQ(factors(4 * 4 * 3 * 5 * 7 * 11),
              (std::vector<int>{4 * 4 * 3 * 5 * 7 * 11, 6, 4, 4, 3, 5, 7, 11}));
}

TEST(Factors, OfAPrimeAreThePrime) {
    EXPECT_EQ(factors(4093), (std::vector<int>{4093, 1, 4093}));
}

TEST(Factors, PutASingleTwoInFront) {
    EXPECT_EQ(factors(32), (std::vector<int>{32, 3, 2, 4, 4}));
    EXPECT_EQ(factors(6), (std::vector<int>{6, 2, 2, 3}));
    EXPECT_EQ(factors(2), (std::vector<int>{2, 1, 2}));
}

TEST(Factors, SkipOddNumbersThatAreNotPrime) {
    EXPECT_EQ(factors(9 * 49), (std::vector<int>{441, 4, 3, 3, 7, 7}));
}

TEST(Factors, OfOneAreNotWritten) {
    int ifac[20];
    std::fill_n(ifac, 20, -7);
    float wsave[17];
    std::fill_n(wsave, 17, kPoison);
    __ogg_fdrffti(1, wsave, ifac);
    EXPECT_EQ(std::count(ifac, ifac + 20, -7), 20);
    EXPECT_EQ(std::count(wsave, wsave + 17, kPoison), 17);
}

// 60 = 4 * 3 * 5: three rows of width 15, then two of width 5; the last factor has no pair.
TEST(Twiddles, AreInRowsOfPairsForEachFactorButTheLast) {
    Floats wsave(2 * 60 + 15, kPoison);
    int ifac[20];
    __ogg_fdrffti(60, wsave.data(), ifac);
    const float unit = kTwoPi / 60.0f;

    Floats expected(wsave.size(), kPoison);
    size_t at = 60;
    for (const auto& [groups, radix, width] : {std::array{1, 4, 15}, std::array{4, 3, 5}}) {
        for (int j = 1; j < radix; ++j, at += static_cast<size_t>(width)) {
            const float step = static_cast<float>(j * groups) * unit;
            for (int m = 1; m <= (width - 1) / 2; ++m) {
                const float angle = static_cast<float>(m) * step;
                expected[at + static_cast<size_t>(2 * m - 2)] = cosineOf(angle);
                expected[at + static_cast<size_t>(2 * m - 1)] = sineOf(angle);
            }
        }
    }
    EXPECT_EQ(wsave, expected);  // the scratch in front and the rest unchanged
}

TEST(Twiddles, OfACosineTransformFollowTheCosinesAndTheScratch) {
    const CosineTransform cosine(60);
    const RealFft fft(60);
    EXPECT_TRUE(std::equal(fft.wsave.begin() + 60, fft.wsave.begin() + 120, cosine.wsave.begin() + 120));
    EXPECT_EQ(cosine.ifac, fft.ifac);
}

TEST(Cosines, AreThoseOfTheQuarterWave) {
    const CosineTransform transform(7);
    const float unit = (kTwoPi / 4) / 7.0f;
    for (size_t k = 0; k < 7; ++k) {
        EXPECT_EQ(transform.wsave[k], cosineOf(static_cast<float>(k + 1) * unit)) << k;
    }
}

TEST(Cosines, OfLengthOneAreOneValue) {
    const CosineTransform transform(1);
    EXPECT_NEAR(transform.wsave[0], 0.0f, 1e-7f);
}

// Set-up keeps nothing between calls; a thread sanitizer confirms it here.
TEST(Cosines, MayBeSetUpByTwoThreadsAtOnce) {
    Floats other;
    std::thread thread([&other] { other = CosineTransform(599).wsave; });
    const Floats mine = CosineTransform(599).wsave;
    thread.join();
    EXPECT_EQ(mine, other);
}

}  // namespace
}  // namespace quill::test
