// The forward transform against its reference, and the edge cases of its arithmetic.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "kernel_check/problem/fillers.h"
#include "kernel_check/references/fft_hooks.h"
#include "tests/webrtc_common/dsp/dft_objects.h"

namespace quill::test {
namespace {

using media::se_wrapper::fwdFFT;

Samples forward(DftObj_t* object, Samples& in, int dft_type) {
    Samples out(in.size() + 2, 0x5a5a);
    fwdFFT(object, in.data(), static_cast<uint16_t>(dft_type), 1024, out.data(),
           static_cast<uint16_t>(out.size()));
    return out;
}

Samples filled(int n, const Filler& filler, uint32_t seed) {
    std::mt19937 random(seed);
    Samples block(static_cast<size_t>(n));
    filler.fill(block.data(), block.size(), random);
    return block;
}

void expectReference(int n, int m, int dft_type, Samples block) {
    ReferenceFft reference(n, m);
    Samples expected_block = block;
    const Samples expected = reference.forward(expected_block, dft_type);
    EXPECT_EQ(forward(newDftObject(n, m), block, dft_type), expected) << "n " << n << " type " << dft_type;
    EXPECT_EQ(block, expected_block) << "n " << n << " m " << m << " type " << dft_type;
}

TEST(FwdFFT, MatchesTheReferenceOnEveryKindOfBlock) {
    for (const int n : kDftSizes) {
        for (const Filler& filler : kFillers) expectReference(n, n, 0, filled(n, filler, 7));
    }
}

TEST(FwdFFT, TakesTheLargestSizeThatABufferHolds) {
    expectReference(65532, 65000, 2, filled(65532, kUniform, 3));
}

// Nyquist of the packed format is then the last imaginary part, or at length 1 nothing.
TEST(FwdFFT, AnOddLengthIsConvertedAsAnEvenOne) {
    for (const int n : {1, 3, 15}) expectReference(n, n, 0, filled(n, kUniform, 3));
}

TEST(FwdFFT, PadsLikeTheReferenceForEveryLengthOfData) {
    for (const int n : {8, 10, 26}) {
        for (int m = 0; m <= n; ++m) {
            for (const int type : {2, 3}) expectReference(n, m, type, filled(n, kUniform, 3));
        }
    }
}

TEST(FwdFFT, PadsNothingWhenTheDataExceedTheBlock) {
    for (const int type : {2, 3}) expectReference(16, 20, type, filled(16, kUniform, 3));
}

TEST(FwdFFT, LeavesTheBlockAloneInEveryOtherMode) {
    for (const int type : {0, 1, 4, 5, 65535}) expectReference(16, 10, type, filled(16, kUniform, 3));
}

TEST(FwdFFT, AnImpulseHasTheSameRealPartInEveryBinAndHalfOfItAtBothEnds) {
    Samples block(256);
    block[0] = 32767;
    Samples expected(258);
    for (size_t k = 1; k < 128; ++k) expected[2 * k] = 127;
    expected[0] = 63;
    expected[256] = 63;
    EXPECT_EQ(forward(newDftObject(256), block, 0), expected);
}

TEST(FwdFFT, Type2ZeroesTheStartOfTheCallersBlock) {
    Samples block(256, 1000);
    forward(newDftObject(256, 160), block, 2);
    EXPECT_EQ(std::count(block.begin(), block.begin() + 96, 0), 96);
    EXPECT_EQ(std::count(block.begin() + 96, block.end(), 1000), 160);
}

TEST(FwdFFT, Type3ZeroesTheEndOfTheCallersBlock) {
    Samples block(256, 1000);
    forward(newDftObject(256, 160), block, 3);
    EXPECT_EQ(std::count(block.begin(), block.begin() + 160, 1000), 160);
    EXPECT_EQ(std::count(block.begin() + 160, block.end(), 0), 96);
}

// -18 / 10 = -1.8 in both: truncated and then shifted right, or halved and then truncated.
TEST(FwdFFT, ANyquistOfMinusOnePointEightHalvesToMinusOne) {
    Samples block = {0, 18, 0, 0, 0, 0, 0, 0, 0, 0};
    EXPECT_EQ(forward(newDftObject(10), block, 0)[10], -1);
}

TEST(FwdFFT, ADcOfMinusOnePointEightHalvesToZero) {
    Samples block = {-18, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    EXPECT_EQ(forward(newDftObject(10), block, 0)[0], 0);
}

TEST(FwdFFT, AFullScaleConstantFitsInHalfADc) {
    Samples block(256, -32768);
    EXPECT_EQ(forward(newDftObject(256), block, 0)[0], -16384);
}

TEST(FwdFFT, WritesBothImaginaryPartsThatAreAlwaysZero) {
    Samples block = filled(64, kUniform, 5);
    const Samples out = forward(newDftObject(64), block, 0);
    EXPECT_EQ(out[1], 0);
    EXPECT_EQ(out[65], 0);
}

}  // namespace
}  // namespace quill::test
